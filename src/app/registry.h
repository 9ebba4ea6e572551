// app/registry.h — which screens the program has; the one place that knows them all.
#pragma once

#include "core/commands.h"

namespace orvan {

class Clock;
class UserMemory;

// Fills the registry by explicit calls. All must outlive the registry's use.
void registerScreens(ScreenRegistry& registry, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                     const Clock& clock);

} // namespace orvan
