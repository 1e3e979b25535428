#pragma once
// One export from View Files, run on the background task's thread. The
// output is written into a fresh folder beside it and moved into place only
// when whole, so a cancelled or failed export leaves nothing behind, and an
// earlier file of that name stays as it was.

#include <filesystem>
#include <optional>
#include <string>

#include "export/readings_export.h"

namespace gc40 {

class TaskProgress;

struct ExportRun {
  std::optional<ExportSummary> summary;
  std::string error;  // names the output or the file that stopped it
  bool cancelled = false;
};

ExportRun exportWhole(const ExportOptions& options, TaskProgress& progress);

// "Wrote PATH" and what went into it: readings, how many were placed, and
// why the others were not.
std::string exportSummaryText(const std::filesystem::path& output, const ExportSummary& summary);

}  // namespace gc40
