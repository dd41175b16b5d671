#pragma once

#include <cstdint>

/// What becomes of a dragged object. The numbers are those that frmMoveCopy answers with.
enum class DragMode : std::int32_t {
    /// The user is asked.
    Ask = -1,
    Stop = 0,
    /// The object and what hangs under it go to the target and are then deleted from the source.
    Move = 1,
    /// The same without the deletions.
    Copy = 2,
};
