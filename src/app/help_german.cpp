#include "app/help_pages.h"

namespace sondrix {

const std::string_view HelpGerman = R"(Konverter für CSV-Daten von Echoloten Sondrix v21
aus Echogrammen im Format SL2/SL3 oder NMEA-Logs im Format OpenLog
Programmversion {version}

* was schon funktioniert:
- Tiefendaten der Geber Downscan, Primary oder 3D;
- direkte Umwandlung von Echogrammen in .csv mit Ausgabeeinstellungen;
- Umrechnung der Tiefen in Meter, der Geschwindigkeit in km/h;
- Berechnung des Abstands zwischen Punkten in Metern;
- Korrektur der Tiefenwerte in Zentimetern;
- Auswahl der Punkte nach ihrem Abstand in Metern;
- Auswahl der Punkte nach der Tiefenänderung zwischen ihnen in Zentimetern;

* was noch nicht richtig funktioniert:
- Erkennen plötzlicher Koordinatensprünge auf ebener Stelle;
- Überspringen fehlerhafter 'Tiefeneinbrüche' mit Einstellung in Prozent;

3 Ausgabedateien: CSV (TXT), MP (nur Punkte) und PLT-Track für OziExplorer (mit Tiefe)
Ordner als Vorgabe: das zuletzt geöffnete Fenster oder der Ordner, aus dem das Programm gestartet wurde

12.05.13
- Auswertung roher SL2-Echogramme: blau ist die Tiefe nach dem Verfahren des Kartenplotters, rot das stärkste
  Signal in Metern, gesucht vom Ende des Echogramms her;
- Ziel ist es, fehlerhafte Tiefen durch eine eigene Suche zu beseitigen;
- Animation mit Pause ("II", ">>") und Stopp ("X"), Beginn ab jedem Bild;
- Grenze der Tiefendifferenz in cm und Verzögerung bei einem fehlerhaften Bild;
- Kontrast wie Sensitivity in SonarView;
- Kurven in eine BMP-Datei mit "[-]" und automatisch in den Unterordner "echo" des Zielordners

24.10.13
- OziExplorer-API: OziAPI.dll muss im Programmordner oder im Systemordner liegen;
- Wegpunkte mit Relief ("/\/") oder Fisch (">)>");
- Punkte und Strecken auf der Karte, während eine SL2-Datei verarbeitet wird;
- aktuelle Position auf der Karte, während eine CSV-Datei verarbeitet wird;
- das Fenster kann mit "<<" verkleinert werden;
- die aktuelle Geschwindigkeit aus dem Echogramm an der Kurve

24.02.14
- Logs von OpenLog: nur die NMEA-Zeilen $GPGGA und $SDDBT werden gelesen, ohne Zeit;
- Runden der gefundenen Tiefe auf Dezimeter;
- Lesen der Daten des Gebers Primary

29.11.15
- Ausgabemaßstab nach Gebertyp;
- Versuch mit 360 Kurven von SI (funktioniert nicht)

13.02.16
- kein Tiefenvergleich auf den SI-Kanälen;
- die Erforschung des Formats SL3 beginnt, an einem Beispiel vom HDS Gen3

25.05.16
- versuchsweises Kürzen von SL2-Echogrammen in eine neue Datei: nur der gewählte Kanal, Koordinaten auf
  Wunsch auf null gesetzt;
- statt die Datei nacheinander zu lesen, arbeitet das Verfahren mit einem Bytefeld

15.06.16
- SL3 lesen und in eine neue SL2-Datei kürzen;
- SL3 ist zu 60% verstanden, außer der Anzeige des 3D-Kanals;
- für große Dateien gilt eine Grenze von 200 MB für das Ergebnis

30.10.16
- der 3D-Kanal von SL3 wird gelesen, mit fester Tiefe von 20 m und einer Breite der Seitenabtastung von 128 m;
- Pfeile zeigen die Strecke (Course), wohin sich das Boot wirklich bewegt, und die Richtung (Heading), wohin
  die Nase des Gebers zeigt, sofern der Log sie hat

08.11.16
- Englisch;
- die Tiefe von 20 m bleibt, aber die gezeigte Breite ist echt;
- die Strecke (Course) des Logs kann durch die Richtung (Heading) ersetzt werden

22.10.18
- eingeschränkte Unterstützung von SL3v1 aus neuer Firmware mit FishReveal: solche Echogramme werden richtig
  in SL2 umgewandelt

11.11.19
- automatische Ausgabe in CSV aus SL2 und SL3, auch von 3D-Blöcken, auf die Breite der Seitenabtastung
  gekürzt und durch den Drehwinkel begrenzt, auch für einen unter dem Rumpf verdrehten Geber;
- Wahl der Quelle der Richtungswinkel;
- etwas schneller

15.11.19
- Absturz bei großen SL2- und SL3-Dateien behoben;
- Filter für die Randdaten der 3D-Blöcke in Prozent der Breite;
- Abstände zwischen Geber und GPS-Antenne

04.12.19
- Deutsch;
- Umrechnung in WGS84 UTM mit XYZ-Ausgabe;
- Stehenbleiben bei SL3-Dateien mit Blöcken der Größe null behoben

Hinweis:
Das Programm wird ohne jede Gewährleistung bereitgestellt: Der Autor haftet nicht für Schäden durch seine
Benutzung. Es darf kostenlos benutzt, kopiert, geändert und weitergegeben werden, solange dieser Hinweis
dabei bleibt. Zur Navigation sind die Tiefen nicht geeignet.
)";

}  // namespace sondrix
