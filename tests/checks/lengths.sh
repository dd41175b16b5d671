#!/usr/bin/env bash
# No file of src/ is longer than 600 lines, unless long-files.txt says why.
# shellcheck source=tests/checks/lib.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib.sh"
enter_project "$@"

why="a file that cannot be read in one sitting holds more than one thing"
limit=600
list=tests/checks/long-files.txt

files=$(cpp_files src)
require "$files"
findings=$(
    {
        # "path: reason", with empty lines and lines that begin with # left out.
        if [[ -f $list ]]; then
            awk -v list="$list" '!/^#/ && NF { print "L", list ":" FNR, $0 }' "$list"
        fi
        tr '\n' '\0' <<<"$files" | xargs -0 -r awk 'FNR == 1 && NR > 1 { print "N", name, count } { name = FILENAME; count = FNR }
            END { if (NR) print "N", name, count }'
    } | awk -v limit="$limit" '
        $1 == "L" {
            path = $3
            colon = sub(/:$/, "", path)
            if (!colon || NF < 4) { print $2 ": gives no reason; write \"path: reason\""; next }
            excused[path] = $2
            next
        }
        $3 > limit && !($2 in excused) {
            print $2 ":" $3 ": has " $3 " lines, more than " limit "; split it, or give it a line with a reason in tests/checks/long-files.txt"
        }
        $3 > limit { long[$2] = 1 }
        END { for (path in excused) if (!(path in long)) print excused[path] ": excuses " path ", which is not that long; take the line out" }'
)
verdict "$why" "$files" "$findings"
