#!/usr/bin/env bash
# Headers guard themselves, and each source file proves its own header complete by including it first.
# shellcheck source=tests/checks/lib.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib.sh"
enter_project "$@"

why="a header that is included first cannot lean on what another one happened to bring along"

files=$(cpp_files)
require "$files"
findings=$(
    {
        sed 's/^/F /' <<<"$files"
        code_of <<<"$files" | grep -E '^[^:]*:[0-9]+:[[:space:]]*[^[:space:]]' | sed 's/^/C /'
    } | awk '
        function base(path) { sub(/^.*\//, "", path); return path }
        function tell(where, what, mend) { print where ": " what "; " mend }
        function finish() {
            if (current ~ /\.cpp$/ && own != "" && !met)
                tell(current ":1", "does not include its own header", "begin with #include \"" own "\"")
        }
        $1 == "F" { if ($2 ~ /\.h$/) exists[$2] = 1; next }
        {
            fact = substr($0, 3)
            file = substr(fact, 1, index(fact, ":") - 1)
            rest = substr(fact, index(fact, ":") + 1)
            line = substr(rest, 1, index(rest, ":") - 1)
            text = substr(rest, index(rest, ":") + 1)
            if (file != current) {
                finish()
                current = file
                met = 0
                own = file
                sub(/\.cpp$/, ".h", own)
                own = (own in exists) ? base(own) : ""
                if (file ~ /\.h$/ && text !~ /^[ \t]*#[ \t]*pragma[ \t]+once[ \t]*$/)
                    tell(file ":" line, "does not begin with #pragma once", "put it above the first line of code")
            }
            if (file ~ /\.cpp$/ && own != "" && !met && text ~ /^[ \t]*#[ \t]*include/) {
                met = 1
                if (index(text, "\"" own "\"") == 0)
                    tell(file ":" line, "includes another header before its own", "include \"" own "\" first")
            }
        }
        END { finish() }'
)
verdict "$why" "$files" "$findings"
