#include "viewer/line_index_store.h"

#include <QFile>
#include <QSaveFile>

namespace gc40 {
namespace {

QString pathOf(const std::filesystem::path& folder, std::string_view name) {
  return QString::fromStdString((folder / std::string(name)).string());
}

std::optional<LineIndexError> write(const QString& path, const std::string& bytes) {
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) &&
      file.write(bytes.data(), static_cast<qint64>(bytes.size())) ==
          static_cast<qint64>(bytes.size()) &&
      file.commit())
    return std::nullopt;
  return LineIndexError{"Cannot write " + path.toStdString() + ": " +
                        file.errorString().toStdString()};
}

std::variant<std::string, LineIndexError> read(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return LineIndexError{"Cannot read " + path.toStdString() + ": " +
                          file.errorString().toStdString()};
  return file.readAll().toStdString();
}

}  // namespace

std::variant<std::vector<StationEntry>, LineIndexError> storeAndReloadLineIndex(
    const std::filesystem::path& settingsFolder, const std::vector<StationEntry>& stations) {
  const QString presencePath = pathOf(settingsFolder, kPresenceIndexName);
  const QString valuePath = pathOf(settingsFolder, kValueIndexName);
  const LineIndexBytes written = encodeLineIndex(stations);
  if (auto error = write(presencePath, written.presence)) return *error;
  if (auto error = write(valuePath, written.values)) return *error;
  LineIndexBytes reloaded;
  for (auto [path, into] :
       {std::pair{presencePath, &reloaded.presence}, std::pair{valuePath, &reloaded.values}}) {
    auto bytes = read(path);
    if (auto* error = std::get_if<LineIndexError>(&bytes)) return *error;
    *into = std::move(std::get<std::string>(bytes));
  }
  return decodeLineIndex(reloaded);
}

}  // namespace gc40
