#include "gps/gps_line_list.h"

#include <QPainter>
#include <QStyledItemDelegate>

namespace gc40 {
namespace {

constexpr int kTextMargin = 2;
constexpr int kWrap = Qt::TextWrapAnywhere;  // NMEA fields hold no spaces to break at

class WrappingDelegate : public QStyledItemDelegate {
 public:
  explicit WrappingDelegate(QListWidget* list) : QStyledItemDelegate(list), list_(list) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QRect area = textArea(QRect(0, 0, list_->viewport()->width(), 0xFFFF));
    const QRect text =
        option.fontMetrics.boundingRect(area, kWrap, index.data(Qt::DisplayRole).toString());
    return {area.width() + 2 * kTextMargin, text.height()};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QString text = item.text;
    item.text.clear();  // the style draws the background and selection only
    list_->style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, list_);
    const bool selected = item.state & QStyle::State_Selected;
    painter->setPen(item.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(textArea(item.rect), kWrap | Qt::AlignLeft | Qt::AlignVCenter, text);
  }

 private:
  static QRect textArea(const QRect& rect) {
    return rect.adjusted(kTextMargin, 0, -kTextMargin, 0);
  }

  QListWidget* list_;
};

}  // namespace

GpsLineList::GpsLineList(QWidget* parent) : QListWidget(parent) {
  setItemDelegate(new WrappingDelegate(this));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // a constant width to wrap to
  setFocusPolicy(Qt::NoFocus);
}

void GpsLineList::addLine(const QString& line) {
  addItem(line);
  scrollToItem(item(count() - 1));
}

}  // namespace gc40
