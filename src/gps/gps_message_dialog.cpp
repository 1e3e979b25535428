#include "gps/gps_message_dialog.h"

#include <QLabel>
#include <QLineEdit>

#include "ui/setup_dialog.h"

namespace gc40 {
namespace {

bool portraitOwner(QWidget* owner) {
  const QWidget* window = owner ? owner->window() : nullptr;
  return window && window->width() <= window->height();
}

class GpsMessageView : public SetupDialog {
 public:
  GpsMessageView(QWidget* owner, const QString& text)
      : SetupDialog(owner, QStringLiteral("GPS Message"), portraitOwner(owner)) {
    addWide(makeLabel(kGpsMessageLabelId, QStringLiteral("Enter GPS message to be sent")));
    message_ = makeEdit(kGpsMessageEditId, text);
    addWide(message_);
    arrangeRows();
  }

  QString message() const { return message_->text(); }

 protected:
  void onOk() override { done(1); }

 private:
  QLineEdit* message_ = nullptr;
};

}  // namespace

std::optional<QString> runGpsMessageDialog(QWidget* owner, const QString& text) {
  GpsMessageView dialog(owner, text);
  if (dialog.exec() != 1) return std::nullopt;
  return dialog.message();
}

}  // namespace gc40
