#include "ui/setup_dialog.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "platform/serial_port_info.h"
#include "settings/settings_file.h"
#include "ui/screen_layout.h"
#include "ui/warning_box.h"
#include "ui/window_geometry.h"

namespace gc40 {
namespace {

constexpr int kFontPixels = 14;
constexpr int kMargin = 4;
constexpr int kSpacing = 3;
constexpr int kAdapterFontPixels = 11;

// Shows what fits of its text, the whole of it in the tool tip: an adapter's
// name may be longer than the room beside a port list.
class ElidedLabel : public QLabel {
 public:
  using QLabel::QLabel;
  void setFullText(const QString& text) {
    full_ = text;
    setToolTip(text);
    elide();
  }
  // Takes the width the column has; never widens it.
  QSize sizeHint() const override { return {0, QLabel::sizeHint().height()}; }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QLabel::resizeEvent(event);
    elide();
  }

 private:
  void elide() { setText(fontMetrics().elidedText(full_, Qt::ElideRight, width())); }

  QString full_;
};

}  // namespace

void fillCombo(QComboBox* combo, const ComboBox& model) {
  const QSignalBlocker quiet(combo);
  combo->clear();
  for (const std::string_view item : model.items) combo->addItem(qText(item));
  combo->setCurrentIndex(model.selection);
}

void saveSettings(LoggerContext& context, QWidget* owner) {
  const SettingsFileResult saved =
      loadOrSaveSettings(context.settings, context.storage.settingsFolder(), true);
  if (saved.outcome != SettingsFileResult::Outcome::kFailed) return;
  showWarning(owner, QString::fromStdString(saved.error));
}

void readCombos(std::span<QComboBox* const> combos, std::span<ComboBox> models) {
  for (std::size_t i = 0; i < combos.size(); ++i) models[i].selection = combos[i]->currentIndex();
}

SetupDialog::SetupDialog(QWidget* owner, const QString& title, bool portrait)
    : QDialog(owner),
      portrait_(portrait),
      scale_(windowScale(owner)),
      grid_(new QGridLayout(this)) {
  setWindowTitle(title);
  QFont font = this->font();
  font.setPixelSize(kFontPixels * scale_);
  setFont(font);
  const LayoutSize size = layoutSize(portrait);
  setFixedSize(size.width * scale_, size.height * scale_);
  grid_->setContentsMargins(kMargin * scale_, kMargin * scale_, kMargin * scale_, kMargin * scale_);
  grid_->setSpacing(kSpacing * scale_);
}

void SetupDialog::accept() { onOk(); }

void SetupDialog::reject() {
  onCancel();
  done(0);
}

QLabel* SetupDialog::makeLabel(int id, const QString& text) {
  auto* label = new QLabel(text, this);
  label->setObjectName(QString::number(id));
  return label;
}

QComboBox* SetupDialog::makeCombo(int id, const ComboBox& model) {
  auto* combo = new QComboBox(this);
  combo->setObjectName(QString::number(id));
  fillCombo(combo, model);
  return combo;
}

QLineEdit* SetupDialog::makeEdit(int id, const QString& text) {
  auto* edit = new QLineEdit(text, this);
  edit->setObjectName(QString::number(id));
  return edit;
}

QPushButton* SetupDialog::makeButton(int id, const QString& text) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::number(id));
  button->setAutoDefault(false);
  return button;
}

QWidget* SetupDialog::makeDevicePath(QComboBox* portCombo, const PortMap& ports) {
  auto* note = new QWidget(this);
  auto* lines = new QVBoxLayout(note);
  lines->setContentsMargins(0, 0, 0, 0);
  lines->setSpacing(0);
  auto* path = new QLabel(note);
  path->setObjectName(QStringLiteral("devicePath"));
  auto* adapter = new ElidedLabel(note);
  adapter->setObjectName(QStringLiteral("adapter"));
  QFont small = font();
  small.setPixelSize(kAdapterFontPixels * scale_);
  adapter->setFont(small);
  lines->addWidget(path);
  lines->addWidget(adapter);
  // Asked once per dialog: an adapter plugged in meanwhile shows next time.
  const auto show = [path, adapter, &ports, adapters = findSerialAdapters()](int index) {
    const std::string device = devicePathFor(ports, index);
    path->setText(QString::fromStdString(device));
    adapter->setFullText(QString::fromStdString(adapterNote(adapters, device)));
  };
  show(portCombo->currentIndex());
  connect(portCombo, &QComboBox::currentIndexChanged, note, show);
  return note;
}

std::vector<QComboBox*> SetupDialog::addComboRows(std::span<const ComboRow> rows,
                                                  std::span<const ComboBox> models,
                                                  std::size_t portRow, const PortMap& ports) {
  std::vector<QComboBox*> combos;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    combos.push_back(makeCombo(rows[i].comboId, models[i]));
    QWidget* note = i == portRow ? makeDevicePath(combos.back(), ports) : nullptr;
    addRow(makeLabel(rows[i].labelId, QString::fromLatin1(rows[i].label)), combos.back(), note);
  }
  return combos;
}

void SetupDialog::addRow(QLabel* label, QWidget* field, QWidget* note) {
  rows_.push_back({label, field, note});
}

void SetupDialog::addWide(QWidget* widget) { wide_.push_back(widget); }

void SetupDialog::arrangeRows(int landscapeColumns) {
  const int lastRow =
      portrait_ || landscapeColumns == 1 ? placeBesideLabels() : placeUnderLabels(landscapeColumns);
  const int span = grid_->columnCount();
  int row = lastRow;
  for (QWidget* widget : wide_) grid_->addWidget(widget, row++, 0, 1, span);
  addOkCancel(row, span);
}

int SetupDialog::placeBesideLabels() {
  int row = 0;
  for (const Row& entry : rows_) {
    grid_->addWidget(entry.label, row, 0);
    grid_->addWidget(entry.field, row, 1);
    if (entry.note) {
      if (portrait_)
        grid_->addWidget(entry.note, ++row, 1);
      else
        grid_->addWidget(entry.note, row, 2);
    }
    ++row;
  }
  return row;
}

int SetupDialog::placeUnderLabels(int columns) {
  const int perColumn = (static_cast<int>(rows_.size()) + columns - 1) / columns;
  for (int i = 0; i < static_cast<int>(rows_.size()); ++i) {
    const Row& entry = rows_[static_cast<std::size_t>(i)];
    const int row = i % perColumn * 2;
    grid_->addWidget(entry.label, row, i / perColumn);
    grid_->addWidget(entry.field, row + 1, i / perColumn);
  }
  for (int column = 0; column < columns; ++column) grid_->setColumnStretch(column, 1);
  return perColumn * 2;
}

void SetupDialog::addOkCancel(int row, int columnSpan) {
  grid_->setRowStretch(row, 1);  // spare height above the buttons
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  QPushButton* ok = makeButton(kIdOk, QStringLiteral("OK"));
  ok->setDefault(true);
  QPushButton* cancel = makeButton(kIdCancel, QStringLiteral("Cancel"));
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  grid_->addLayout(buttons, row + 1, 0, 1, columnSpan);
  connect(ok, &QPushButton::clicked, this, &SetupDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &SetupDialog::reject);
}

}  // namespace gc40
