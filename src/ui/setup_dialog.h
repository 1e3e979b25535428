#pragma once
// What the four setup dialogs share: the 14 px font and the layout size of
// the screen shape (both scaled like the main window), controls named by
// their ids, drop-down lists filled from the dialog rules, labelled rows laid
// out for portrait or landscape, and OK / Cancel.

#include <QDialog>
#include <QString>
#include <span>
#include <string_view>
#include <vector>

#include "platform/logger_context.h"
#include "platform/port_map.h"
#include "platform/qt_text.h"
#include "ui/combo_selection.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace gc40 {

inline constexpr int kIdOk = 1;
inline constexpr int kIdCancel = 2;

// Replaces the list's items and selects the model's item (none for
// kNoSelection), without raising the list's change notice.
void fillCombo(QComboBox* combo, const ComboBox& model);

// What every OK does last: the settings file is rewritten. A failed write is
// told in a "WARNING" box over `owner` naming the file and the reason; the
// previous file stays as it was and the settings stay in force for this run.
void saveSettings(LoggerContext& context, QWidget* owner);

// Each list's current selection into its model, kNoSelection when none.
void readCombos(std::span<QComboBox* const> combos, std::span<ComboBox> models);

// A labelled drop-down list of a dialog made of such lists.
struct ComboRow {
  int labelId;
  const char* label;
  int comboId;
};

class SetupDialog : public QDialog {
 public:
  // `portrait` picks the layout; the scale is the main window's when the
  // owner is the main window or one of its screens, else 1.
  SetupDialog(QWidget* owner, const QString& title, bool portrait);

  bool portrait() const { return portrait_; }
  int scale() const { return scale_; }

  // OK and Cancel (and Escape, and closing the window) end here.
  void accept() override;
  void reject() override;

 protected:
  virtual void onOk() = 0;
  virtual void onCancel() {}

  QLabel* makeLabel(int id, const QString& text);
  QComboBox* makeCombo(int id, const ComboBox& model);
  QLineEdit* makeEdit(int id, const QString& text);
  QPushButton* makeButton(int id, const QString& text);
  // The device path that the port list's chosen name stands for and, under
  // it, the serial adapter found there (or the ones found elsewhere), kept up
  // to date as the choice changes. A path with no adapter listed (such as a
  // pseudo-terminal) is used all the same.
  QWidget* makeDevicePath(QComboBox* portCombo, const PortMap& ports);

  // One row per list, filled from `models`; the list at `portRow` shows the
  // device path of its port (and its adapter) beside it.
  std::vector<QComboBox*> addComboRows(std::span<const ComboRow> rows,
                                       std::span<const ComboBox> models, std::size_t portRow,
                                       const PortMap& ports);
  // A label and its field; `note` sits beside the field in landscape and
  // under it in portrait, where the width is short.
  void addRow(QLabel* label, QWidget* field, QWidget* note = nullptr);
  // A control across the whole width, after the rows.
  void addWide(QWidget* widget);
  // Places the rows, the wide controls and OK / Cancel. Portrait has one
  // column with each label beside its field; a landscape layout too short for
  // that spreads the rows over `landscapeColumns` columns, each label over its
  // field (no notes there).
  void arrangeRows(int landscapeColumns = 1);
  // OK / Cancel under whatever the dialog put in grid() itself.
  void addOkCancel(int row, int columnSpan);
  QGridLayout* grid() const { return grid_; }

 private:
  struct Row {
    QLabel* label;
    QWidget* field;
    QWidget* note;
  };

  int placeBesideLabels();  // these two return the first free grid row
  int placeUnderLabels(int columns);

  bool portrait_;
  int scale_ = 1;
  QGridLayout* grid_;
  std::vector<Row> rows_;
  std::vector<QWidget*> wide_;
};

// An entry point of run_setup_dialogs.h: the dialog, modal, and its result.
template <typename Dialog, typename... Arguments>
int runModal(QWidget* owner, Arguments&... arguments) {
  Dialog dialog(owner, arguments...);
  return dialog.exec();
}

}  // namespace gc40
