#include "app/help_pages.h"

namespace sondrix {

const std::string_view HelpEnglish = R"(Converter CSV data from sounders Sondrix v21
from echograms format SL2/SL3 or NMEA-logs OpenLog format
program version {version}

* what already works:
- depth data from the sensors Downscan, Primary or 3D;
- direct translation from echograms to .csv with output settings;
- translation depths in meters, speed in km/h;
- calculation of distance between points in meters;
- correction in centimeters for depth values;
- filtering points by distance between them in meters;
- filtering points by changing the depth between them in centimeters;

* what doesn't work as it should:
- tracking of sharp shifts of coordinates on a flat place;
- skipping erroneous depth 'drops' with percentage setting;

3 output files: CSV (TXT), MP (points only) and PLT track for OziExplorer (with depth)
folders by default: the last open window or from where the program is started
OpenLog stores its logs with the extension .TXT: rename them to .LOG before processing

12.05.13
- analyser of raw SL2 echograms: blue marks the depth found by the chartplotter's own algorithm, red the
  strongest signal in meters, searched from the end of the echogram;
- the aim is to remove defective depths with an own search;
- animation with pause ("II", ">>") and stop ("X"), start from any scan;
- depth difference threshold in cm and a delay on a bad scan;
- contrast like Sensitivity in SonarView;
- pictures to a BMP file with "[-]", and automatically into the subfolder "echo" of the target folder

24.10.13
- OziExplorer API: OziAPI.dll is to be in the program folder or in the system folder;
- waypoints with relief ("/\/") or fish (">)>");
- points and tracks on the map while an SL2 file is processed;
- current position on the map while a CSV file is processed;
- the window can be reduced with "<<";
- the current speed from the echogram on the graph

24.02.14
- logs from OpenLog: only the NMEA strings $GPGGA and $SDDBT are read, with no time;
- rounding of the found depth to decimeters;
- reading data from the Primary transducer

29.11.15
- output scale by transducer type;
- test of 360 charts of SI (does not work)

13.02.16
- no depth comparison on SI channels;
- the search for the SL3 format begins, on a sample from HDS Gen3

25.05.16
- test cropping of SL2 echograms into a new file: only the chosen channel, coordinates zeroed on request;
- the algorithm moves from sequential reading of the file to a byte array

15.06.16
- reading SL3 and cropping it into a new SL2 file;
- SL3 is understood to 60% except for the display of the 3D channel;
- for large files the limit is 200 MB for the result

30.10.16
- the 3D channel of SL3 is read, with a fixed depth of 20 m and a sidescan width of 128 m;
- arrows show the Course, where the boat really moves, and the Heading, where the nose of the transducer
  points, where the log has them

08.11.16
- English;
- the depth of 20 m stays, but the width shown is real;
- the log's Course can be overwritten with the Heading

22.10.18
- limited support for SL3v1 from new firmware with FishReveal: such echograms convert correctly to SL2

11.11.19
- automatic output to CSV from SL2 and SL3, also of 3D blocks, cropped to the sidescan width and limited by
  the turning angle, with support for a transducer turned under the hull;
- choice of the source of direction angles;
- some speed gained

15.11.19
- a crash on large SL2 and SL3 files is fixed;
- filter of the edge data of 3D blocks as a percentage of the width;
- distances between transducer and GPS antenna

04.12.19
- German;
- conversion to WGS84 UTM with XYZ output;
- a stop on SL3 files with blocks of size zero is fixed

The program comes as it is, without any warranty: the author isn't liable for damage that its use may cause.
It may be used, copied, changed and passed on free of charge, as long as this notice stays with it.
Don't rely on the depths for navigation.
)";

}  // namespace sondrix
