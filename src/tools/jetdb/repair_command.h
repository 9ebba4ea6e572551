// tools/jetdb/repair_command.h — jetdb repair: makes a sound file of a damaged one and tells what was saved.
#pragma once

#include "tools/jetdb/commands.h"

namespace jetdb {

int runRepair(const Arguments& args); // as Command::run

} // namespace jetdb
