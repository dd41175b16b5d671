#pragma once

struct DragItem;

/// What a drop of an item on another one would do.
enum class Drop {
    Allowed,
    Refused,
    /// The item is over its own node.
    OnItself,
};

/// Judges by the types of both items and the names on their paths alone; names compare exactly. A datasource may be
/// dropped anywhere, where nothing happens.
Drop judgeDrop(const DragItem& source, const DragItem& target);
