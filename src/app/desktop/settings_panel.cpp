#include "app/desktop/settings_panel.h"

#include "app/captions.h"
#include "app/desktop/key_filter.h"
#include "app/desktop/qt_text.h"
#include "app/language.h"
#include "core/channel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace sondrix {
namespace {

constexpr int RowPitch = 19, FieldHeight = 19;
constexpr int Top = 3;
constexpr int Right = 361;
constexpr int ButtonWidth = 28;
constexpr int BoxTop = 346, BoxPitch = 14, BoxLeft = 62, BoxSize = 15;
constexpr int OptionTop = 459;
constexpr int MaxProcCharacters = 2;

// A row of one field, or of two with a separator between them.
struct NumberRow {
  const char *label, *field, *separator = nullptr, *second = nullptr;
};
constexpr NumberRow NumberRows[] = {{"lblDepthMP", "DepthMP"},
                                    {"lblMaxDiff", "MaxDiff"},
                                    {"lblDistDiff", "DistDiff"},
                                    {"lblMaxGrad", "MaxGrad"},
                                    {"lblDepthDiff", "DepthDiff"},
                                    {"lblDepthSm", "DepthSm"},
                                    {"lblDefLvl", "DefLvl"},
                                    {"lblDefSlp", "DefSlp"},
                                    {"lblScanSkip", "ScanSkip", "lblScanTo", "ScanCut"},
                                    {"lblDucerX", "DucerX", "lblDucerY", "DucerY"},
                                    {"lblMaxSide", "MaxSide", "lblMaxProc", "MaxProc"}};

// A box and its label; the second of a row stands beside the first.
struct BoxPlace {
  const char *box, *label;
  int row, left, right;
};
constexpr BoxPlace BoxPlaces[] = {
    {"MakeCut", "lblMakeCut", 0, BoxLeft, Right},   {"HideCut", "lblHideCut", 1, BoxLeft, Right},
    {"SaveGraf", "lblSaveGraf", 2, BoxLeft, Right}, {"UseBeep", "lblUseBeep", 3, BoxLeft, Right},
    {"UseDcm", "lblUseDcm", 4, BoxLeft, 244},       {"UseHead", "lblUseHead", 4, 248, Right},
    {"UseRev", "lblUseRev", 5, BoxLeft, 244},       {"UseUTM", "lblUseUTM", 5, 248, Right},
    {"MakeGraf", "lblMakeGraf", 6, BoxLeft, Right}, {"ViewOzi", "lblViewOzi", 7, BoxLeft, Right}};

constexpr int OptionWidths[] = {66, 82, 78, 46};

QLabel* AddLabel(QWidget* parent, const char* name, const QRect& place) {
  auto* label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  label->setGeometry(place);
  return label;
}

QLineEdit* AddField(QWidget* parent, const char* name, const QRect& place) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(QLatin1String(name));
  field->setGeometry(place);
  // What is dropped is for the window.
  field->setAcceptDrops(false);
  return field;
}

void AddBrowse(QWidget* parent, const char* name, int y) {
  auto* button = new QPushButton(parent);
  button->setObjectName(QLatin1String(name));
  button->setGeometry(Right - ButtonWidth, y, ButtonWidth, FieldHeight);
}

void AddNumberRow(QWidget* panel, const NumberRow& row, int y) {
  if (!row.second) {
    AddLabel(panel, row.label, {0, y, 304, FieldHeight});
    AddField(panel, row.field, {307, y, Right - 307, FieldHeight});
    return;
  }
  AddLabel(panel, row.label, {0, y, 239, FieldHeight});
  AddField(panel, row.field, {242, y, 50, FieldHeight});
  AddLabel(panel, row.separator, {292, y, 19, FieldHeight})->setAlignment(Qt::AlignCenter);
  AddField(panel, row.second, {311, y, Right - 311, FieldHeight});
}

void AddBox(QWidget* panel, const BoxPlace& place) {
  const int y = BoxTop + place.row * BoxPitch;
  auto* box = new QCheckBox(panel);
  box->setObjectName(QLatin1String(place.box));
  box->setGeometry(place.left, y, BoxSize, BoxPitch);
  box->setStyleSheet(QLatin1String("QCheckBox::indicator { width: 12px; height: 12px; }"));
  const int left = place.left + BoxSize + 3;
  AddLabel(panel, place.label, {left, y, place.right - left, BoxPitch});
}

void AddOptions(QWidget* panel) {
  AddLabel(panel, "lblUseTyp", {0, OptionTop, 86, FieldHeight});
  auto* group = new QWidget(panel);
  group->setObjectName(QLatin1String("UseTyp"));
  group->setGeometry(89, OptionTop, SettingsWidth - 89, FieldHeight);
  int left = 0;
  const int* width = OptionWidths;
  for (const ChannelRow& row : Channels) {
    auto* option = new QRadioButton(QtText(row.name), group);
    option->setObjectName(QString(QLatin1String("UseTyp%1")).arg(ChannelByte(row.channel)));
    option->setGeometry(left, 0, *width, FieldHeight);
    left += *width++;
  }
}

void AddFilters(QWidget* panel) {
  const auto field = [panel](const char* name) { return panel->findChild<QLineEdit*>(QLatin1String(name)); };
  for (const char* name : {"DepthSm", "DucerX", "DucerY"}) FilterDigits(field(name), true);
  for (const char* name : {"DepthDiff", "MaxDiff", "MaxSide", "MaxGrad"}) FilterDigits(field(name), false);
  FilterLength(field("MaxProc"), MaxProcCharacters);
}

}  // namespace

QRect CourseRect() { return {0, BoxTop, 40, 40}; }
QRect HeadingRect() { return {0, BoxTop + 39, 40, 40}; }

QWidget* BuildSettingsPanel(QWidget* parent) {
  auto* panel = new QWidget(parent);
  int y = Top;
  const auto nextRow = [&y] { return std::exchange(y, y + RowPitch); };
  for (const char* name : {"Source", "TargetPath"}) {
    AddLabel(panel, (std::string("lbl") + name).c_str(), {0, nextRow(), Right, FieldHeight});
    AddField(panel, name, {0, y, Right - ButtonWidth - 2, FieldHeight});
    AddBrowse(panel, (std::string("btn") + name).c_str(), nextRow());
  }
  AddLabel(panel, "lblTargetName", {0, nextRow(), Right, FieldHeight});
  AddField(panel, "TargetName", {0, nextRow(), Right, FieldHeight});
  for (const NumberRow& row : NumberRows) AddNumberRow(panel, row, nextRow());

  AddLabel(panel, "lblCrsHed", {0, 328, 120, 16});
  for (const BoxPlace& place : BoxPlaces) AddBox(panel, place);
  auto* languages = new QComboBox(panel);
  languages->setObjectName(QLatin1String("boxLang"));
  languages->setGeometry(0, 430, 56, 22);
  for (const LanguageItem& item : LanguageItems) languages->addItem(QtText(item.name), item.id);
  languages->setCurrentIndex(-1);
  AddOptions(panel);
  AddFilters(panel);
  return panel;
}

void BuildHiddenFlags(QWidget* parent) {
  for (const char* name : {"UseRad", "UseMet", "UseXYZ"}) {
    auto* box = new QCheckBox(parent);
    box->setObjectName(QLatin1String(name));
    box->setFocusPolicy(Qt::NoFocus);
    QLabel* label = AddLabel(parent, (std::string("lbl") + name).c_str(), {});
    const bool enabled = std::string_view(name) == "UseXYZ";
    for (QWidget* widget : {static_cast<QWidget*>(box), static_cast<QWidget*>(label)}) {
      widget->setEnabled(enabled);
      widget->hide();
    }
  }
}

}  // namespace sondrix
