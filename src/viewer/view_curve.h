#pragma once
// The viewer's profile ("ViewCurveWnd"): the chosen line's stations drawn as
// the logging screen draws its live profile, with a bar on one station.
// Left/Right move the bar one station, PgUp/PgDn 80, Home/End to the ends; a
// tap puts it on the tapped station.

#include <QWidget>
#include <cstddef>
#include <functional>
#include <vector>

#include "settings/settings.h"
#include "survey/survey_lines.h"
#include "viewer/line_view.h"

namespace gc40 {

class ViewCurve : public QWidget {
 public:
  // `scale` is the main window's whole factor; sizes below are layout pixels.
  ViewCurve(int scale, QWidget* parent = nullptr);

  // Shows `stations` drawn with `settings` (see viewingSettings), bar on the first.
  void showLine(std::vector<StationEntry> stations, const Settings& settings);
  // The profile's size in layout pixels: the plot, its axis and scale labels.
  void setLayoutSize(int width, int height);
  std::int32_t plotHeight() const;
  // Called whenever the bar lands on a station (also by showLine).
  void onBarMoved(std::function<void()> handler) { barMoved_ = std::move(handler); }
  const std::vector<StationEntry>& stations() const { return stations_; }

  // The bar stays put at an end of the line.
  void moveBar(BarMove move);
  // On station `bar` of the line (a tap on the map); ignored beyond its end.
  void putBar(std::size_t bar);
  std::size_t bar() const { return bar_; }
  std::size_t firstShown() const { return first_; }
  std::size_t columns() const;
  int plotWidth() const;
  int layoutWidth() const { return width_; }
  const Settings& settings() const { return settings_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void setBar(std::size_t bar);

  int scale_;
  int width_ = 320;
  int height_ = 200;
  std::vector<StationEntry> stations_;
  Settings settings_;
  std::size_t bar_ = 0;
  std::size_t first_ = 0;
  std::function<void()> barMoved_;
};

}  // namespace gc40
