#include "ui/warning_box.h"

#include <QMessageBox>

namespace gc40 {

void showWarning(QWidget* owner, const QString& text) {
  QMessageBox box(QMessageBox::Warning, QString::fromLatin1(kWarningCaption), text, QMessageBox::Ok,
                  owner);
  box.exec();
}

}  // namespace gc40
