// figures.h — what the proof prints at its end.
#pragma once

#include "board.h"

namespace proof {

struct Progress {
    uint64_t fewestReads = 0, fewestWrites = 0; // of one process
};
Progress printFigures(const Board& board, int workers, double seconds);

} // namespace proof
