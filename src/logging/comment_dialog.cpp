#include <QLabel>
#include <QLineEdit>

#include "logging/line_station_dialogs.h"
#include "logging/line_station_model.h"
#include "ui/setup_dialog.h"

namespace gc40 {
namespace {

// The comment needs no settings, so the screen's shape comes from the window
// it is opened over (portraitScreen is that window's shape as well).
bool portraitOwner(QWidget* owner) {
  const QWidget* window = owner ? owner->window() : nullptr;
  return window && window->width() <= window->height();
}

class CommentView : public SetupDialog {
 public:
  explicit CommentView(QWidget* owner)
      : SetupDialog(owner, QStringLiteral("Enter Comment"), portraitOwner(owner)) {
    addWide(makeLabel(850, QStringLiteral("Maximum 11 characters")));
    // Not limited to 11: whatever is typed is read, and the record cuts it.
    comment_ = makeEdit(851, QString());
    addWide(comment_);
    arrangeRows();
  }

  std::u16string comment() const { return commentText(comment_->text().toStdU16String()); }

 protected:
  void onOk() override { done(1); }

 private:
  QLineEdit* comment_ = nullptr;  // 851
};

}  // namespace

std::optional<std::u16string> runCommentDialog(QWidget* owner) {
  CommentView dialog(owner);
  if (dialog.exec() != 1) return std::nullopt;
  return dialog.comment();
}

}  // namespace gc40
