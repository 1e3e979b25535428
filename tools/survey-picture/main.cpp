// survey-picture: surveys exported by `r40 export` to CSV, drawn side by side
// on one frame as dots coloured by conductivity, so that the same ground
// exported two ways (as recorded, and corrected for lag and layback) can be
// compared at a glance.
//
//   survey-picture OUT.png TITLE FILE.csv [TITLE FILE.csv]... [--column NAME]

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "harness/csv_fields.h"

namespace {

constexpr int kExitTrouble = 2;
constexpr double kMetresPerDegree = 111'320.0;  // of latitude; near enough for a picture
constexpr double kMaxPixelsPerMetre = 40;
constexpr int kPanelHeight = 560;  // pixels for the taller side of the frame
constexpr int kMargin = 40;
constexpr int kTitleHeight = 30;
constexpr int kBarWidth = 16;
// How far a reading colours the map around it, and how fast its weight falls.
constexpr double kReachM = 1.5;
constexpr double kSpreadM = 0.5;

struct Dot {
  double latitude = 0;
  double longitude = 0;
  double value = 0;
};

struct Panel {
  std::string title;
  std::vector<Dot> dots;
};

// A whole field as a number; empty fields (no position, no value) give none.
std::optional<double> number(const std::string& field) {
  double value = 0;
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
  if (field.empty() || error != std::errc{} || end != field.data() + field.size())
    return std::nullopt;
  return value;
}

// The readings of an export that have a position and a value in `column`.
std::optional<std::vector<Dot>> readDots(const std::string& path, const std::string& column,
                                         std::string& error) {
  std::ifstream in(path);
  std::string line;
  if (!in || !std::getline(in, line)) {
    error = path + ": cannot be read";
    return std::nullopt;
  }
  const std::vector<std::string> header = gc40::csvFields(line);
  const auto find = [&](const std::string& name) {
    return static_cast<std::size_t>(std::find(header.begin(), header.end(), name) - header.begin());
  };
  const std::size_t latitude = find("latitude"), longitude = find("longitude"),
                    value = find(column);
  if (std::max({latitude, longitude, value}) >= header.size()) {
    error = path + ": no latitude, longitude and " + column + " columns (not an r40 export?)";
    return std::nullopt;
  }
  std::vector<Dot> dots;
  while (std::getline(in, line)) {
    const std::vector<std::string> row = gc40::csvFields(line);
    if (row.size() != header.size()) continue;
    const auto lat = number(row[latitude]), lon = number(row[longitude]), v = number(row[value]);
    if (lat && lon && v) dots.push_back({*lat, *lon, *v});
  }
  return dots;
}

// Dark blue through teal and green to yellow, so that low values recede and
// anomalies stand out; `share` from 0 to 1.
QColor rampColour(double share) {
  static const QColor stops[] = {
      {68, 1, 84}, {59, 82, 139}, {33, 145, 140}, {94, 201, 98}, {253, 231, 37}};
  const double place = std::clamp(share, 0.0, 1.0) * (std::size(stops) - 1);
  const auto low = std::min(static_cast<std::size_t>(place), std::size(stops) - 2);
  const double f = place - static_cast<double>(low);
  const QColor &a = stops[low], &b = stops[low + 1];
  return QColor::fromRgbF(static_cast<float>(a.redF() + f * (b.redF() - a.redF())),
                          static_cast<float>(a.greenF() + f * (b.greenF() - a.greenF())),
                          static_cast<float>(a.blueF() + f * (b.blueF() - a.blueF())));
}

QString text(const std::string& value) { return QString::fromStdString(value); }

// For the colour bar: the export's conductivities are in mS/m, its inphase in ppt.
std::string unitOf(const std::string& column) {
  if (column.starts_with("cond_")) return " mS/m";
  if (column.starts_with("inph_")) return " ppt";
  return " " + column;
}

// Qt wants a runtime folder; without XDG_RUNTIME_DIR it would leave
// /tmp/runtime-USER behind, so a private one lives as long as the drawing.
class RuntimeFolder {
 public:
  RuntimeFolder() {
    if (std::getenv("XDG_RUNTIME_DIR")) return;
    std::string folder =
        (std::filesystem::temp_directory_path() / "survey-picture-XXXXXX").string();
    if (!mkdtemp(folder.data())) return;
    folder_ = folder;
    setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
  }
  ~RuntimeFolder() {
    std::error_code ignored;
    if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
  }
  RuntimeFolder(const RuntimeFolder&) = delete;
  RuntimeFolder& operator=(const RuntimeFolder&) = delete;

 private:
  std::filesystem::path folder_;
};

int usage(std::ostream& out, int status) {
  out << "usage: survey-picture OUT.png TITLE FILE.csv [TITLE FILE.csv]... [--column NAME]\n"
         "  FILE.csv as r40 export writes it; coloured by its NAME column (default cond_v)\n";
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  std::string column = "cond_v";
  if (const auto found = std::find(arguments.begin(), arguments.end(), "--column");
      found != arguments.end()) {
    if (found + 1 == arguments.end()) return usage(std::cerr, kExitTrouble);
    column = *(found + 1);
    arguments.erase(found, found + 2);
  }
  if (arguments.size() < 3 || arguments.size() % 2 == 0) return usage(std::cerr, kExitTrouble);

  std::vector<Panel> panels;
  for (std::size_t i = 1; i < arguments.size(); i += 2) {
    std::string error;
    auto dots = readDots(arguments[i + 1], column, error);
    if (!dots) return std::cerr << "survey-picture: " << error << '\n', kExitTrouble;
    panels.push_back({arguments[i], std::move(*dots)});
  }

  // One frame for every panel, in metres east and north of its corner.
  double south = std::numeric_limits<double>::infinity(), north = -south, west = south,
         east = -south, low = south, high = -south;
  for (const Panel& panel : panels)
    for (const Dot& dot : panel.dots) {
      south = std::min(south, dot.latitude), north = std::max(north, dot.latitude);
      west = std::min(west, dot.longitude), east = std::max(east, dot.longitude);
      low = std::min(low, dot.value), high = std::max(high, dot.value);
    }
  if (south > north)
    return std::cerr << "survey-picture: no reading has a position\n", kExitTrouble;
  if (high - low < 1e-9) high = low + 1;
  const double eastScale =
      kMetresPerDegree * std::cos((south + north) / 2 * std::numbers::pi / 180);
  // Room around the outermost readings for the map they colour.
  const double widthM = (east - west) * eastScale + 2 * kReachM,
               heightM = (north - south) * kMetresPerDegree + 2 * kReachM;
  const double pixelsPerMetre =
      std::min(kPanelHeight / std::max(widthM, heightM), kMaxPixelsPerMetre);
  const int panelWidth = static_cast<int>(std::ceil(widthM * pixelsPerMetre));
  const int panelHeight = static_cast<int>(std::ceil(heightM * pixelsPerMetre));

  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  const RuntimeFolder runtimeFolder;
  int qtArgc = 1;
  QGuiApplication app(qtArgc, argv);
  QFont font;
  font.setPixelSize(14);
  const QFontMetrics metrics(font);
  int titleWidth = 0;
  for (const Panel& panel : panels)
    titleWidth = std::max(titleWidth, metrics.horizontalAdvance(text(panel.title)));
  const int panelStep = std::max(panelWidth, titleWidth) + kMargin;
  const int width = kMargin + static_cast<int>(panels.size()) * panelStep + kBarWidth + 60;
  const int height = kTitleHeight + kMargin + panelHeight + 2 * kMargin;

  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(font);
  const double top = kTitleHeight + kMargin;

  for (std::size_t p = 0; p < panels.size(); ++p) {
    const double slot = kMargin + static_cast<double>(p) * panelStep;
    const double left = slot + (panelStep - kMargin - panelWidth) / 2.0;  // centred under the title
    painter.setPen(Qt::black);
    painter.drawText(QRectF(slot, kMargin / 2, panelStep - kMargin, kTitleHeight),
                     Qt::AlignHCenter | Qt::AlignVCenter, text(panels[p].title));
    // Each pixel a weighted mean of the readings around it, as a map is
    // gridded (weights fall off as a Gaussian); then the readings themselves
    // as small dots.
    const auto place = [&](const Dot& dot) {
      return QPointF(((dot.longitude - west) * eastScale + kReachM) * pixelsPerMetre,
                     ((north - dot.latitude) * kMetresPerDegree + kReachM) * pixelsPerMetre);
    };
    std::vector<QPointF> points;
    for (const Dot& dot : panels[p].dots) points.push_back(place(dot));
    const double reach = kReachM * pixelsPerMetre, spread = kSpreadM * pixelsPerMetre;
    // Readings in cells as wide as their reach, so that a pixel looks only
    // at the cells around its own.
    const int columns = static_cast<int>(panelWidth / reach) + 1,
              rows = static_cast<int>(panelHeight / reach) + 1;
    std::vector<std::vector<std::size_t>> cells(static_cast<std::size_t>(columns * rows));
    const auto cellOf = [&](double x, double y) {
      return std::pair(std::clamp(static_cast<int>(x / reach), 0, columns - 1),
                       std::clamp(static_cast<int>(y / reach), 0, rows - 1));
    };
    for (std::size_t i = 0; i < points.size(); ++i) {
      const auto [column, row] = cellOf(points[i].x(), points[i].y());
      cells[static_cast<std::size_t>(row * columns + column)].push_back(i);
    }
    QImage grid(panelWidth, panelHeight, QImage::Format_ARGB32);
    grid.fill(Qt::transparent);
    for (int y = 0; y < panelHeight; ++y)
      for (int x = 0; x < panelWidth; ++x) {
        double weights = 0, sum = 0;
        const auto [column, row] = cellOf(x, y);
        for (int r = std::max(row - 1, 0); r <= std::min(row + 1, rows - 1); ++r)
          for (int c = std::max(column - 1, 0); c <= std::min(column + 1, columns - 1); ++c)
            for (const std::size_t i : cells[static_cast<std::size_t>(r * columns + c)]) {
              const double dx = points[i].x() - x, dy = points[i].y() - y;
              const double d2 = dx * dx + dy * dy;
              if (d2 > reach * reach) continue;
              const double w = std::exp(-d2 / (2 * spread * spread));
              weights += w, sum += w * panels[p].dots[i].value;
            }
        if (weights > 0) grid.setPixelColor(x, y, rampColour((sum / weights - low) / (high - low)));
      }
    painter.drawImage(QPointF(left, top), grid);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 90));
    for (const QPointF& point : points) painter.drawEllipse(point + QPointF(left, top), 1.2, 1.2);
  }

  // A scale bar of whole metres under the first panel, north up.
  const double barMetres = std::max(1.0, std::floor(widthM / 2));
  const double scaleY = top + panelHeight + kMargin / 2;
  painter.setPen(QPen(Qt::black, 2));
  painter.drawLine(QPointF(kMargin, scaleY), QPointF(kMargin + barMetres * pixelsPerMetre, scaleY));
  painter.drawText(QRectF(kMargin, scaleY + 4, 200, 20), Qt::AlignLeft,
                   text(gc40::formatFixed(barMetres, 0) + " m, north up"));

  // The colour bar, with its ends' values.
  const double barLeft = kMargin + static_cast<double>(panels.size()) * panelStep;
  for (int y = 0; y < panelHeight; ++y)
    painter.fillRect(QRectF(barLeft, top + y, kBarWidth, 1),
                     rampColour(1.0 - static_cast<double>(y) / panelHeight));
  painter.setPen(Qt::black);
  painter.drawText(QRectF(barLeft - 10, top - 22, 80, 20), Qt::AlignLeft,
                   text(gc40::formatFixed(high, 0) + unitOf(column)));
  painter.drawText(QRectF(barLeft - 10, top + panelHeight + 2, 80, 20), Qt::AlignLeft,
                   text(gc40::formatFixed(low, 0)));
  painter.end();

  if (!image.save(QString::fromStdString(arguments[0]), "PNG"))
    return std::cerr << "survey-picture: " << arguments[0] << ": cannot be written\n", kExitTrouble;
  return 0;
}
