#include "misfit_plot.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "base/number_text.h"
#include "ui/offscreen_gui.h"

namespace gc40 {
namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 480;
const QRectF kPlot(90, 50, kWidth - 90 - 30, kHeight - 50 - 60);

// 1, 2 or 5 times a power of ten, so that about `wanted` steps cover `span`.
double tickStep(double span, int wanted) {
  const double raw = span / wanted;
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  for (const double factor : {1.0, 2.0, 5.0})
    if (raw <= factor * power) return factor * power;
  return 10.0 * power;
}

// Whole multiples of `step` from `low` to `high`, computed rather than summed
// so that none comes out as -0.0 or 0.30000000000000004.
std::vector<double> ticks(double low, double high, double step) {
  std::vector<double> values;
  for (auto i = static_cast<long>(std::ceil(low / step)); i * step <= high; ++i)
    values.push_back(i == 0 ? 0.0 : static_cast<double>(i) * step);
  return values;
}

int decimalsFor(double step) {
  return step >= 1.0 ? 0 : static_cast<int>(std::ceil(-std::log10(step)));
}

QString text(const std::string& value) { return QString::fromStdString(value); }

}  // namespace

bool drawMisfitPlot(const LagEstimate& estimate, const std::string& path, std::string& error) {
  const OffscreenGui gui;
  double low = std::numeric_limits<double>::infinity(), high = -low;
  for (const LagMisfit& point : estimate.curve) {
    if (!std::isfinite(point.misfit)) continue;
    low = std::min(low, point.misfit);
    high = std::max(high, point.misfit);
  }
  if (estimate.curve.empty() || low > high) {
    error = path + ": the misfit curve holds no value to draw";
    return false;
  }
  if (high - low < 1e-12) high = low + 1.0;
  const double margin = (high - low) * 0.05;
  low -= margin;
  high += margin;
  const double first = estimate.curve.front().lagMs;
  const double last = std::max(estimate.curve.back().lagMs + 0.0, first + 1.0);
  const auto x = [&](double lag) {
    return kPlot.left() + (lag - first) / (last - first) * kPlot.width();
  };
  const auto y = [&](double misfit) {
    return kPlot.bottom() - (misfit - low) / (high - low) * kPlot.height();
  };

  QImage image(kWidth, kHeight, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QFont font = painter.font();
  font.setPixelSize(13);
  painter.setFont(font);

  if (estimate.found) {
    const double from = x(estimate.lagMs - estimate.uncertaintyMs);
    const double to = x(estimate.lagMs + estimate.uncertaintyMs);
    painter.fillRect(QRectF(QPointF(std::max(from, kPlot.left()), kPlot.top()),
                            QPointF(std::min(to, kPlot.right()), kPlot.bottom())),
                     QColor(255, 220, 220));
    painter.setPen(QPen(QColor(200, 0, 0), 1.5));
    painter.drawLine(QPointF(x(estimate.lagMs), kPlot.top()),
                     QPointF(x(estimate.lagMs), kPlot.bottom()));
  }

  const double lagStep = tickStep(last - first, 8);
  const double misfitStep = tickStep(high - low, 6);
  for (const double lag : ticks(first, last, lagStep)) {
    painter.setPen(QPen(QColor(220, 220, 220), 1));
    painter.drawLine(QPointF(x(lag), kPlot.top()), QPointF(x(lag), kPlot.bottom()));
    painter.setPen(Qt::black);
    painter.drawText(QRectF(x(lag) - 40, kPlot.bottom() + 4, 80, 18), Qt::AlignHCenter,
                     text(formatFixed(lag, 0)));
  }
  for (const double misfit : ticks(low, high, misfitStep)) {
    painter.setPen(QPen(QColor(220, 220, 220), 1));
    painter.drawLine(QPointF(kPlot.left(), y(misfit)), QPointF(kPlot.right(), y(misfit)));
    painter.setPen(Qt::black);
    painter.drawText(QRectF(0, y(misfit) - 9, kPlot.left() - 6, 18),
                     Qt::AlignRight | Qt::AlignVCenter,
                     text(formatFixed(misfit, decimalsFor(misfitStep))));
  }

  QPainterPath curve;
  bool drawing = false;
  for (const LagMisfit& point : estimate.curve) {
    if (!std::isfinite(point.misfit)) {
      drawing = false;
      continue;
    }
    const QPointF at(x(point.lagMs), y(point.misfit));
    if (drawing)
      curve.lineTo(at);
    else
      curve.moveTo(at);
    drawing = true;
  }
  painter.setPen(QPen(QColor(0, 70, 170), 2));
  painter.drawPath(curve);

  painter.setPen(Qt::black);
  painter.drawRect(kPlot);
  painter.drawText(QRectF(kPlot.left(), kPlot.bottom() + 26, kPlot.width(), 20), Qt::AlignHCenter,
                   "lag of the meter behind the GPS (ms)");
  painter.save();
  painter.translate(18, kPlot.center().y());
  painter.rotate(-90);
  painter.drawText(QRectF(-100, -10, 200, 20), Qt::AlignCenter, "misfit");
  painter.restore();
  font.setPixelSize(16);
  painter.setFont(font);
  const std::string title = estimate.found ? "lag " + formatInteger(estimate.lagMs) + " ms +/- " +
                                                 formatFixed(estimate.uncertaintyMs, 0) + " ms"
                                           : "lag cannot be told: " + estimate.problem;
  painter.drawText(QRectF(kPlot.left(), 10, kPlot.width(), 30), Qt::AlignHCenter | Qt::AlignVCenter,
                   text(title));
  painter.end();

  if (!image.save(QString::fromStdString(path), "PNG")) {
    error = path + ": cannot be written";
    return false;
  }
  return true;
}

}  // namespace gc40
