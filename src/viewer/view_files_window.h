#pragma once
// The View Files screen ("ViewFilesWnd"): covers the main window, opens a
// recorded file, shows its header and its survey lines, draws the chosen
// line's profile (ViewCurve) and the map of the whole file (SurveyMap). X or
// Escape returns to the main window.
//
// Keys on the line list: Up/Down choose, Return or V views, M the map, O
// opens another file, E exports it. On the profile: the bar keys of
// ViewCurve, L or Backspace back to the list, M the map, P a picture, O
// another file, E export. On the map: 1-4 the value, the arrows pan, + and -
// zoom, Home fits, M back to where it came from, L the list, P a picture.

#include <QWidget>
#include <array>
#include <filesystem>
#include <optional>
#include <vector>

#include "map/map_colours.h"
#include "map/map_readings.h"
#include "platform/logger_context.h"
#include "survey/reading_positions.h"
#include "survey/survey_lines.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace gc40 {

class SurveyMap;
class ViewCurve;

inline constexpr int kViewOpenId = 470;
inline constexpr int kViewLineId = 471;
inline constexpr int kViewExitId = 472;
inline constexpr int kViewLinesId = 473;
inline constexpr int kViewCurveExitId = 474;
inline constexpr int kViewExportId = 475;
inline constexpr int kViewCurveExportId = 476;
inline constexpr int kViewMapId = 477;
inline constexpr int kViewCurveMapId = 478;
inline constexpr int kViewCurvePictureId = 479;
inline constexpr int kViewMapLinesId = 480;
inline constexpr int kViewMapBackId = 481;
inline constexpr int kViewMapPictureId = 482;
inline constexpr int kViewMapExitId = 483;
inline constexpr int kViewMapExportId = 484;

class ViewFilesWindow : public QWidget {
  Q_OBJECT

 public:
  ViewFilesWindow(LoggerContext& context, QWidget* mainWindow, int scale);

  // Fills the main window and takes the keyboard; with no file loaded yet it
  // asks for one at once, and goes back to the menu when none is chosen.
  void showOverMainWindow();

  // The open-file dialog in the data folder; false when cancelled or the
  // chosen file could not be read.
  bool chooseFile();
  // Reads and splits `path` (reporting damage), then lists its lines.
  bool openFile(const std::filesystem::path& path);
  // Writes the line index files for line `index` and draws it from them.
  bool viewLine(int index);

  const std::optional<SurveyFile>& file() const { return file_; }
  const std::filesystem::path& filePath() const { return filePath_; }
  const MapReadings& mapReadings() const { return mapReadings_; }
  ViewCurve* curve() const { return curve_; }
  SurveyMap* map() const { return map_; }
  // The line whose profile the curve holds, if any.
  std::optional<int> curveLine() const { return curveLine_; }
  // Writes a picture of the profile or the map shown beside the data file
  // and says where; the path written, or nullopt.
  std::optional<std::filesystem::path> savePicture();
  // Under the profile: "Stn: 12.00", "13 of 40", and one "C/V: 8.25" label
  // per trace, blank after the colon where the station has no value.
  QString readout() const;

 signals:
  void closed();
  // E with a file open: the export dialog is the main menu's to run (it
  // needs the export library, which the screens do not link).
  void exportRequested(const QString& dataFile);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  std::optional<std::filesystem::path> askForFile();
  void createControls();
  void placeControls();
  void showList();
  void onKey(int keyCode);
  void replayTypedAhead();
  void stepLine(int step);  // the line above (-1) or below (+1) in the list
  bool loadLine(int index);
  void showPage(QWidget* page);
  void showMap();
  void leaveMap();
  void chooseValue(std::size_t value);
  void updateMap();
  void onMapTapped(std::uint32_t reading);
  void placeAsExported();
  void showReadout();
  void listLines();
  void takeKeys();
  void leave();
  void askForExport();
  void warn(const QString& text);

  LoggerContext& context_;
  int scale_;
  std::optional<SurveyFile> file_;
  MapReadings mapReadings_;
  std::array<std::optional<std::optional<ColourLimits>>, kMapValueCount> percentiles_;
  PositionOptions placedWith_;
  std::size_t mapValue_ = 0;
  std::optional<int> curveLine_;
  std::filesystem::path filePath_;
  std::optional<std::vector<int>> typedAhead_;  // keys typed while a file loads
  QString fileName_;
  QWidget* listPage_ = nullptr;
  QLabel* fileLabel_ = nullptr;
  QLabel* headerLabel_ = nullptr;
  QListWidget* lines_ = nullptr;
  QWidget* curvePage_ = nullptr;
  QLabel* lineLabel_ = nullptr;
  ViewCurve* curve_ = nullptr;
  QLabel* stationLabel_ = nullptr;
  QLabel* positionLabel_ = nullptr;
  std::array<QLabel*, 4> valueLabels_{};
  QWidget* mapPage_ = nullptr;
  QWidget* pageBeforeMap_ = nullptr;
  QComboBox* valueCombo_ = nullptr;
  QComboBox* limitsCombo_ = nullptr;
  QLabel* placeLabel_ = nullptr;
  SurveyMap* map_ = nullptr;
};

}  // namespace gc40
