#!/usr/bin/env bash
# Arrows between the rooms of src/ run only downward, files form no circle, and CMake says the same as the includes.
#
#   layering.sh [FOLDER [classes]]
#
# With "classes", a class's header and source count as one, which also shows classes that know each other.
# shellcheck source=tests/checks/lib.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib.sh"
enter_project "$@"

why="a room may know only what lies below it (docs/architecture.md), so that each can be read, built and tested alone"

# Room: the rooms that it may include. The feature rooms stand side by side and never see each other.
below_features="shell catalog dao widgets system"
arrows="system:
dao: system
widgets: system
catalog: dao widgets system
shell: catalog dao widgets system
files: $below_features
databases: $below_features
users: $below_features
interchange: $below_features
movecopy: $below_features
app: files databases users interchange movecopy $below_features"

sources=$(cpp_files src)
require "$sources"
# In CMake, quorvane_<room> within a room's list file is an arrow of that room.
uses=$(all_files | grep -E '^(src|driver)/.*CMakeLists\.txt$' | tr '\n' '\0' |
    xargs -0 -r awk '{ sub(/#.*/, ""); if ($0 ~ /quorvane_|tarnwick_|tarnwickodbc/) print FILENAME ":" FNR ":" $0 }')

findings=$(
    {
        sed 's/^/A /' <<<"$arrows"
        sed 's/^/F /' <<<"$sources"
        cpp_files driver | sed 's/^/D /'
        sed 's/^/U /' <<<"$uses"
        cpp_files src driver | code_of | grep -E '^[^:]*:[0-9]+:[[:space:]]*#[[:space:]]*include' | sed 's/^/I /' || true
    } | awk -v together="${2:-files}" -f "$CHECKS/layering.awk"
)
verdict "$why" "$sources" "$findings"
