#include "platform/remote_control.h"

#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <cstdio>

#include "platform/log_categories.h"

namespace gc40 {
namespace {

constexpr int kFrontWatchMs = 20;

// The window that takes the operator's input now: the modal dialog or box in
// front, else the active window, else the first visible one.
QWidget* frontWindow() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (widget->isVisible()) return widget;
  return nullptr;
}

QWidget* keyTarget() {
  QWidget* front = frontWindow();
  if (!front) return nullptr;
  QWidget* focus = QApplication::focusWidget();
  return focus && focus->window() == front ? focus : front;
}

struct NamedKey {
  const char* name;
  Qt::Key key;
  const char* text;
};

constexpr NamedKey kNamedKeys[] = {
    {"Return", Qt::Key_Return, "\r"}, {"Escape", Qt::Key_Escape, "\x1b"},
    {"Tab", Qt::Key_Tab, "\t"},       {"Space", Qt::Key_Space, " "},
    {"Left", Qt::Key_Left, ""},       {"Right", Qt::Key_Right, ""},
    {"Up", Qt::Key_Up, ""},           {"Down", Qt::Key_Down, ""},
    {"Shift", Qt::Key_Shift, ""},
};

void postKey(QWidget* target, int key, const QString& text) {
  const Qt::KeyboardModifiers modifiers =
      !text.isEmpty() && text[0].isUpper() ? Qt::ShiftModifier : Qt::NoModifier;
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, key, modifiers, text));
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyRelease, key, modifiers, text));
}

void postCharacter(QWidget* target, QChar character) {
  postKey(target, QKeySequence(QString(character).toUpper())[0].key(), character);
}

void pressKey(const QString& name) {
  QWidget* target = keyTarget();
  if (!target) return;
  for (const NamedKey& named : kNamedKeys) {
    if (name == QLatin1String(named.name)) return postKey(target, named.key, named.text);
  }
  if (name.size() == 1) postCharacter(target, name[0]);
}

void typeText(const QString& text) {
  if (QWidget* target = keyTarget())
    for (const QChar character : text) postCharacter(target, character);
}

void clickButton(const QString& idOrText) {
  QWidget* front = frontWindow();
  if (!front) return;
  for (QAbstractButton* button : front->findChildren<QAbstractButton*>()) {
    const bool named =
        button->objectName() == idOrText || QString(button->text()).remove('&') == idOrText;
    if (named && button->isVisible()) return button->click();
  }
}

// The screen (a widget named "...Wnd") that holds the keyboard focus, if any.
QString focusedScreen() {
  for (QWidget* widget = QApplication::focusWidget(); widget; widget = widget->parentWidget())
    if (widget->objectName().endsWith("Wnd")) return widget->objectName();
  return {};
}

// The front window as the operator sees it, saved as a PNG; "shot PATH" on
// standard output says it is there (or "shot failed PATH").
void saveShot(const QString& path) {
  QWidget* front = frontWindow();
  const bool saved = front && front->grab().save(path, "PNG");
  const QByteArray line = ((saved ? "shot " : "shot failed ") + path + "\n").toUtf8();
  ::write(STDOUT_FILENO, line.constData(), std::size_t(line.size()));
}

}  // namespace

RemoteControl::RemoteControl(QObject* parent)
    : QObject(parent), input_(STDIN_FILENO, QSocketNotifier::Read) {
  connect(&input_, &QSocketNotifier::activated, this, &RemoteControl::readCommands);
  connect(&frontWatch_, &QTimer::timeout, this, &RemoteControl::reportFront);
  frontWatch_.setSingleShot(true);
  frontWatch_.start(kFrontWatchMs);
  QCoreApplication::instance()->installEventFilter(this);
}

// The front window is looked at again only after an event that may change
// it: polling it would wake the program fifty times a second for nothing.
bool RemoteControl::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::FocusIn:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked:
    case QEvent::WindowUnblocked:
    case QEvent::WindowTitleChange:
      if (!frontWatch_.isActive()) frontWatch_.start(kFrontWatchMs);
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void RemoteControl::readCommands() {
  char chunk[512];
  const ssize_t got = ::read(STDIN_FILENO, chunk, sizeof chunk);
  if (got <= 0) {
    input_.setEnabled(false);  // the script has ended; the operator carries on
    return;
  }
  buffered_ += QString::fromUtf8(chunk, int(got));
  for (qsizetype end; (end = buffered_.indexOf('\n')) >= 0;) {
    const QString line = buffered_.left(end).trimmed();
    buffered_.remove(0, end + 1);
    runCommand(line);
  }
}

void RemoteControl::runCommand(const QString& line) {
  qCDebug(lcControl, "%s", qUtf8Printable(line));
  const QString verb = line.section(' ', 0, 0);
  const QString argument = line.section(' ', 1);
  if (verb == "key") pressKey(argument);
  if (verb == "text") typeText(argument);
  if (verb == "click") clickButton(argument);
  if (verb == "mute") muted_.append(argument);
  if (verb == "shot") {
    // The keys sent before it have their effect first, as they would have on screen.
    QCoreApplication::sendPostedEvents();
    saveShot(argument);
  }
}

void RemoteControl::reportFront() {
  const QWidget* front = frontWindow();
  QString title = front ? front->windowTitle() : QString();
  if (const QString screen = focusedScreen(); !screen.isEmpty()) title += " / " + screen;
  if (reportedOnce_ && title == lastFront_) return;
  reportedOnce_ = true;
  lastFront_ = title;
  report(title.isEmpty() ? QString("front") : "front " + title);
}

bool RemoteControl::muted(const QString& word) const { return muted_.contains(word); }

void RemoteControl::report(const QString& line) {
  if (!muted_.isEmpty() && muted(line.section(' ', 0, 0))) return;
  const QByteArray bytes = (line + "\n").toUtf8();
  std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
  std::fflush(stdout);
}

}  // namespace gc40
