#pragma once

class QString;
class QWidget;

namespace gc40 {

inline constexpr char kWarningCaption[] = "WARNING";

// The "WARNING" box with `text` and OK over `owner`, for what the operator
// must hear about a file: a name taken, a file that could not be written.
void showWarning(QWidget* owner, const QString& text);

}  // namespace gc40
