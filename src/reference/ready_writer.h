// reference/ready_writer.h — writes the ready-made curricula (ready_data.h) into a template database of one
// level, and takes them out of a file that has just been copied from one.
#pragma once

#include "core/schema.h"

namespace orvan {

enum class ReadyLevel { Journeyman, Master };

// Definitions, courses and curricula of versions 3 and 4.
// REQUIRES: the level's tables are there; call it once per file.
void writeReadyCurricula(jet::Database& database, ReadyLevel level);

} // namespace orvan
