#pragma once
// The "GPS Message" dialog of the Monitor GPS screen: the command line to
// send to the receiver, modal over `owner` in the shape of the owner's
// window.

#include <QString>
#include <optional>

class QWidget;

namespace gc40 {

inline constexpr int kGpsMessageLabelId = 450;
inline constexpr int kGpsMessageEditId = 451;

// Opens with `text` in its field; the text entered on OK (possibly empty),
// nullopt on Cancel.
std::optional<QString> runGpsMessageDialog(QWidget* owner, const QString& text);

}  // namespace gc40
