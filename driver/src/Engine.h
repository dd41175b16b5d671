#pragma once

struct sqlite3;

namespace tarnwick
{

/// Sees the SQLite connections that the current thread opens during its life. The library below does not hand its
/// connection out, but it opens it through the SQLite library of this process, whose automatic extensions are called
/// for each new connection. What other threads open meanwhile is none of ours and left alone.
class EngineCapture
{
public:
    EngineCapture();
    ~EngineCapture();
    EngineCapture(const EngineCapture&) = delete;
    EngineCapture& operator=(const EngineCapture&) = delete;

    /// The connection opened last, or null.
    sqlite3* Engine() const;
};

/// Sets a catalog connection up: write-ahead log, each commit synced to the disk, and text in double quotes always a
/// name, so that an unknown column is an error and no string. Throws ConnectError with SQLite's own text if the file is
/// no catalog or cannot be read.
void PrepareEngine(sqlite3* engine);

} // namespace tarnwick
