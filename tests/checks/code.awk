# Prints each line of C++ as "file:line:code", with comments and the contents of literals taken out.
# Lines with #include keep their file name, which is no literal.

FNR == 1 { within = ""; terminator = "" }

within == "" && /^[ \t]*#[ \t]*include/ {
    sub(/\/\/.*$/, "")
    print FILENAME ":" FNR ":" $0
    next
}

{
    rest = $0
    code = ""
    while (rest != "") {
        if (within == "comment") {
            end = index(rest, "*/")
            if (!end) break
            rest = substr(rest, end + 2)
            within = ""
            continue
        }
        if (within == "raw") {
            end = index(rest, terminator)
            if (!end) break
            rest = substr(rest, end + length(terminator))
            code = code "\""
            within = ""
            continue
        }
        if (!match(rest, /["'\/]/)) {
            code = code rest
            break
        }
        before = substr(rest, 1, RSTART - 1)
        mark = substr(rest, RSTART, 1)
        after = substr(rest, RSTART + 1)
        code = code before
        if (mark == "/") {
            if (substr(after, 1, 1) == "/") break
            if (substr(after, 1, 1) == "*") {
                within = "comment"
                rest = substr(after, 2)
            } else {
                code = code "/"
                rest = after
            }
            continue
        }
        if (mark == "\"" && code ~ /(^|[^A-Za-z0-9_])(u8|[uUL])?R$/) {
            open = index(after, "(")
            terminator = ")" substr(after, 1, open - 1) "\""
            rest = substr(after, open + 1)
            code = code "\""
            within = "raw"
            continue
        }
        # An apostrophe behind a digit or letter parts the digits of a number, unless the letters are a literal's prefix.
        if (mark == "'" && code ~ /[A-Za-z0-9_]$/ && code !~ /(^|[^A-Za-z0-9_])(u8|[uUL])$/) {
            code = code "'"
            rest = after
            continue
        }
        code = code mark
        rest = after
        while (rest != "") {
            letter = substr(rest, 1, 1)
            if (letter == "\\") rest = substr(rest, 3)
            else {
                rest = substr(rest, 2)
                if (letter == mark) {
                    code = code mark
                    break
                }
            }
        }
    }
    print FILENAME ":" FNR ":" code
}
