#pragma once
// The live profile under the status display ("CurveWnd", id 5): each recorded
// reading marks the right-hand column and the picture moves left as stations
// advance. The picture is kept off screen in layout pixels and shown at the
// window's scale, so a repaint never loses history.

#include <QImage>
#include <QRect>
#include <QWidget>
#include <array>
#include <cstdint>

#include "instrument/reading_decoder.h"
#include "logging/profile_plot.h"
#include "settings/profile_setup.h"
#include "settings/settings.h"

namespace gc40 {

class ProfileView : public QWidget {
 public:
  // Reads the settings and the traces in use as they are at each call; both
  // must outlive the view. `scale` is the window's whole factor.
  ProfileView(const Settings& settings, const ProfileTraces& traces, int scale,
              QWidget* parent = nullptr);

  // A blank picture with the zero line and the grid, sized from the screen
  // shape and plotHeight, and no scrolling until the next point. The caller
  // clears traceContinues too (Go, Enter Scale), so each trace starts with a
  // point rather than a line from where it was.
  void restart();

  // One recorded reading, after readingsAtStation has been brought up to date
  // (0 when the station has just advanced). Sets the flag of each trace drawn.
  void addReading(const FiledValues& filed, std::int32_t readingsAtStation,
                  std::array<std::int32_t, kTraceCount>& traceContinues);

  // Draws what the readings since the last call changed, at once.
  void showPending();

  // The plot in layout pixels: plot width + 2 by plotHeight + 1.
  QImage picture() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void drawGreyLine(int y, int lineWidth, int fromX, int toX);
  void fillPicture(const QRect& area, QRgb colour);
  void fillRun(int y, int fromX, int toX, int shift, QRgb colour);
  template <typename Draw>
  void inPieces(const QRect& area, Draw draw) const;
  void scroll();
  QRect drawStroke(const TraceStroke& stroke);
  QRect onScreen(const QRect& area) const;
  void drawLabels(QPainter& painter);

  const Settings& settings_;
  const ProfileTraces& traces_;
  int scale_;
  int plotWidth_ = 0;
  int plotHeight_ = 0;
  ProfileGrid grid_;
  ProfileState state_;
  // The picture as a ring of columns: a scroll moves where it starts (the
  // column of ring_ that holds the picture's first), not its pixels.
  QImage ring_;
  int origin_ = 0;
  // Around what changed since the screen last caught up: all of it after a
  // scroll, else the newest columns' strokes, so one rectangle does.
  QRect pending_;
};

}  // namespace gc40
