#include "app/export_run.h"

#include <QTemporaryDir>
#include <system_error>
#include <vector>

#include "base/number_text.h"
#include "ui/background_task.h"

namespace gc40 {
namespace {

// The bar's share of each stage the export reports.
struct StageShare {
  std::string_view prefix;
  int from, to;  // permille
  const char* label;
};
constexpr StageShare kStages[] = {{"reading ", 0, 250, "Reading "},
                                  {"placing ", 250, 500, "Placing the readings of "},
                                  {"writing", 500, 1000, "Writing "}};

void reportStage(TaskProgress& progress, const std::string& stage, std::size_t done,
                 std::size_t total, const std::string& outputName) {
  for (const StageShare& share : kStages) {
    if (!stage.starts_with(share.prefix)) continue;
    const std::string subject =
        stage.size() > share.prefix.size() ? stage.substr(share.prefix.size()) : outputName;
    const double part = total > 0 ? double(std::min(done, total)) / double(total) : 0.0;
    progress.report(share.from + static_cast<int>(part * (share.to - share.from)),
                    share.label + subject);
    return;
  }
}

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos;
       at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
  return text;
}

std::string count(std::size_t n, std::string_view one, std::string_view many) {
  return formatInteger(static_cast<std::int64_t>(n)) + " " + std::string(n == 1 ? one : many);
}

}  // namespace

ExportRun exportWhole(const ExportOptions& options, TaskProgress& progress) {
  ExportRun run;
  std::filesystem::path folder = options.output.parent_path();
  if (folder.empty()) folder = ".";
  const std::string name = options.output.filename().string();
  // Hidden, and named after the output, should a crash ever leave it behind.
  QTemporaryDir staging(
      QString::fromStdString((folder / ("." + name + ".export-XXXXXX")).string()));
  if (!staging.isValid()) {
    run.error =
        "Cannot write " + options.output.string() + ": " + staging.errorString().toStdString();
    return run;
  }
  const std::filesystem::path stagingFolder = staging.path().toStdString();
  ExportOptions staged = options;
  staged.output = stagingFolder / name;
  staged.stop = progress.cancelFlag();
  const ExportResult result =
      exportReadings(staged, [&](const std::string& stage, std::size_t done, std::size_t total) {
        reportStage(progress, stage, done, total, name);
      });
  if (result.stopped || progress.cancelled()) {
    run.cancelled = true;
    return run;
  }
  if (!result.summary) {
    // The operator chose the folder, not the staging one inside it.
    run.error = replaceAll(result.error, stagingFolder.string(), folder.string());
    return run;
  }
  std::error_code error;
  std::vector<std::filesystem::path> written;
  for (const auto& entry : std::filesystem::directory_iterator(stagingFolder, error))
    written.push_back(entry.path());
  if (error || written.empty()) {
    run.error = "Cannot write " + options.output.string() + ": " +
                (error ? error.message() : std::string("the export left no file"));
    return run;
  }
  for (const std::filesystem::path& file : written) {
    std::filesystem::rename(file, folder / file.filename(), error);
    if (error) {
      run.error = "Cannot write " + (folder / file.filename()).string() + ": " + error.message();
      return run;
    }
  }
  run.summary = result.summary;
  return run;
}

std::string exportSummaryText(const std::filesystem::path& output, const ExportSummary& summary) {
  std::string text = "Wrote " + output.string() + "\n" +
                     count(summary.readings, "reading", "readings") + ", " +
                     formatInteger(static_cast<std::int64_t>(summary.positioned)) +
                     " positioned (" + summary.system + ")";
  if (!summary.withoutPosition.empty()) {
    text += "\nWithout a position:";
    const char* separator = " ";
    for (const auto& [reason, readings] : summary.withoutPosition) {
      text += separator + formatInteger(static_cast<std::int64_t>(readings)) + " " + reason;
      separator = ", ";
    }
  }
  if (summary.leftOut > 0)
    text += "\n" + count(summary.leftOut, "reading", "readings") +
            " left out: the format holds only readings with a point";
  return text;
}

}  // namespace gc40
