#pragma once
// The four setup dialogs, each run modally over the main window in the layout
// that settings.portraitScreen picks. On OK each stores what its controls
// hold into context.settings (through the dialog rules in *_model.h) and saves
// the settings file; Cancel stores nothing beyond the dialog's live changes.

#include "app/start_up.h"

class QWidget;

namespace gc40 {

// Return the dialog's result: 0, or 1 from Set GPS Port's "Monitor GPS
// Output" (settings stored, file not saved).
int runSurveySetup(QWidget* owner, LoggerContext& context);
int runLoggerSetup(QWidget* owner, LoggerContext& context);
int runGpsPortSetup(QWidget* owner, LoggerContext& context);
// OK also stores the profile's trace switches in context.profileTraces.
int runDisplayOptions(QWidget* owner, LoggerContext& context);

}  // namespace gc40
