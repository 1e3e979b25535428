#include "viewer/survey_pictures.h"

#include <QPainter>
#include <algorithm>

#include "logging/profile_plot.h"
#include "map/map_texts.h"
#include "settings/profile_setup.h"
#include "ui/colour.h"
#include "viewer/line_view.h"
#include "viewer/profile_painter.h"

namespace gc40 {
namespace {

constexpr int kMargin = 4;
constexpr int kRowHeight = 14;
constexpr int kTitlePixels = 11;

QImage blankPicture(LayoutSize layout, int scale) {
  QImage image(layout.width * scale, layout.height * scale, QImage::Format_RGB32);
  image.fill(Qt::white);
  return image;
}

void setFontPixels(QPainter& painter, int pixels) {
  QFont font = painter.font();
  font.setPixelSize(pixels);
  painter.setFont(font);
}

// The title's rows from the top; returns the layout y below them.
int drawTitle(QPainter& painter, const std::vector<std::string>& title, int width) {
  painter.setPen(Qt::black);
  int y = kMargin;
  for (const std::string& row : title) {
    painter.drawText(QRect(kMargin, y, width - 2 * kMargin, kRowHeight),
                     Qt::AlignLeft | Qt::AlignVCenter, QString::fromStdString(row));
    y += kRowHeight;
  }
  return y + kMargin / 2;
}

}  // namespace

QImage mapPicture(const MapPicture& picture, LayoutSize layout, int scale) {
  QImage image = blankPicture(layout, scale);
  QPainter painter(&image);
  painter.scale(scale, scale);
  setFontPixels(painter, kTitlePixels);
  const int top = drawTitle(painter, picture.title, layout.width);
  painter.resetTransform();
  const QRect area(kMargin * scale, top * scale, (layout.width - 2 * kMargin) * scale,
                   (layout.height - top - kMargin) * scale);
  MapPaint paint = picture.paint;
  paint.scale = scale;
  const std::optional<MapBounds> bounds = mapBounds(*paint.map);
  if (picture.fit && bounds)
    paint.view =
        fitView(*bounds, mapDotsSize(area.width() / scale, area.height() / scale), kMapFitMargin);
  paintMap(painter, area, paint);
  return image;
}

QImage profilePicture(const ProfilePicture& picture, LayoutSize layout, int scale) {
  QImage image = blankPicture(layout, scale);
  QPainter painter(&image);
  painter.scale(scale, scale);
  setFontPixels(painter, kTitlePixels);
  int top = drawTitle(painter, picture.title, layout.width);

  const bool portrait = layout.width < layout.height;
  const int plotWidth = profilePlotWidth(portrait ? 1 : 0);
  const std::int32_t plotHeight = std::max(1, layout.height - top - kRowHeight - kMargin - 1);
  const Settings settings = viewingSettings(picture.today, picture.recorded, plotHeight);
  // Under the title, the values drawn, each in its trace's colour.
  const ProfileTraces traces = setupProfileTraces(settings);
  int x = kMargin;
  for (std::size_t trace = 0; trace < kMapValueCount; ++trace) {
    if (!traces.traceOn[trace]) continue;
    const QString name = QString::fromLatin1(kMapValueNames[trace].data(), 3) + " " +
                         QString::fromLatin1(valueUnit(trace).data());
    painter.setPen(qColour(settings.traceColour[trace]));
    painter.drawText(QRect(x, top, layout.width, kRowHeight), Qt::AlignLeft | Qt::AlignVCenter,
                     name);
    x += painter.fontMetrics().horizontalAdvance(name) + 3 * kMargin;
  }
  top += kRowHeight;

  const std::size_t count = picture.stations->size();
  ProfilePaint paint{.stations = picture.stations,
                     .first = picture.first,
                     .columns = picture.columns.value_or(count),
                     .settings = settings,
                     .plotWidth = plotWidth,
                     .plotHeight = plotHeight,
                     .width = layout.width,
                     .bar = std::nullopt};
  if (!picture.columns && count > 1)
    paint.columnWidth =
        std::min<double>(kViewColumnPixels, plotWidth / static_cast<double>(count - 1));
  painter.translate(0, top);
  paintProfile(painter, paint);
  return image;
}

std::optional<std::string> savePicture(const QImage& image, const std::filesystem::path& path) {
  if (image.save(QString::fromStdString(path.string()), "PNG")) return std::nullopt;
  return "Cannot write " + path.string();
}

}  // namespace gc40
