# Input, one fact a line:
#   A room: rooms      what a room may include
#   F file, D file     a file of src/, of driver/
#   U file:line:text   a line of a CMake list that names a target of ours
#   I file:line:text   an include
# Prints a finding a line. The variable together is "files" or "classes": what the circles are looked for among.

function room_of(path,    part) {
    split(path, part, "/")
    return part[1] == "driver" ? "driver" : part[2] == "platform" ? part[3] : part[2]
}
function base(path) { sub(/^.*\//, "", path); return path }
function unit(path) { if (together == "classes") sub(/\.[a-z]+$/, "", path); return path }
function tell(where, what, mend) { print where ": " what "; " mend }
function list_of(room) { return "src/" (room ~ /^(dao|system|widgets)$/ ? "platform/" : "") room "/CMakeLists.txt" }
function place(fact,    colon, rest) {
    file = substr(fact, 1, index(fact, ":") - 1)
    rest = substr(fact, index(fact, ":") + 1)
    colon = index(rest, ":")
    where = file ":" substr(rest, 1, colon - 1)
    text = substr(rest, colon + 1)
}

# Depth first over the files; one met again while it is still being walked closes a circle.
function walk(one,    i, other, from, shown) {
    state[one] = "walking"
    path[++depth] = one
    for (i = 1; i <= out[one]; ++i) {
        other = next_unit[one, i]
        if (state[other] == "walking") {
            for (from = 1; path[from] != other; ++from) ;
            shown = base(other)
            for (++from; from <= depth; ++from) shown = shown " -> " base(path[from])
            tell(edge_place[one, other], "closes the circle " shown " -> " base(other),
                 "let one of them be told (signal, callback, interface) what it now asks for")
        } else if (state[other] == "") walk(other)
    }
    state[one] = "walked"
    --depth
}

{ kind = $1; fact = substr($0, 3) }

kind == "A" {
    room = substr(fact, 1, index(fact, ":") - 1)
    known[room] = 1
    n = split(substr(fact, index(fact, ":") + 1), part, " ")
    for (i = 1; i <= n; ++i) allowed[room, part[i]] = 1
}

kind == "F" && fact != "" {
    room = room_of(fact)
    if (!(room in known) && !(room in told)) {
        told[room] = 1
        tell(fact ":1", "lies in no known room",
             "move it into a room, or give the new room its arrows in tests/checks/layering.sh and docs/architecture.md")
    }
    filled[room] = 1
    if (fact ~ /\.h$/) {
        if (base(fact) in owner)
            tell(fact ":1", "bears the same name as " owner[base(fact)], "rename one; includes go by bare file name")
        owner[base(fact)] = fact
    }
}

kind == "D" && fact ~ /\.h$/ { driver_header[base(fact)] = fact }

kind == "U" && fact != "" {
    place(fact)
    room = room_of(file)
    if (room != "driver" && text ~ /tarnwick(_|odbc)/)
        tell(where, "names the bundled driver", "the workbench reaches drivers through the driver manager alone")
    while (match(text, /quorvane_[a-z]+/)) {
        target = substr(text, RSTART + 9, RLENGTH - 9)
        text = substr(text, RSTART + RLENGTH)
        if (!(target in known) || target == room) continue
        if (room == "driver") {
            tell(where, "makes the driver depend on the workbench's room " target, "the driver is a product of its own")
            continue
        }
        if (!((room, target) in allowed))
            tell(where, "draws an arrow from " room " to " target, "take it out; arrows run only downward")
        uses[room, target] = 1
        uses_place[room, target] = where
    }
}

kind == "I" {
    place(fact)
    if (!match(text, /["<][^">]+[">]/)) next
    name = substr(text, RSTART + 1, RLENGTH - 2)
    quoted = substr(text, RSTART, 1) == "\""
    room = room_of(file)
    plain = base(name)
    if (room == "driver") {
        if (quoted && (plain in owner) && !(plain in driver_header))
            tell(where, "takes \"" name "\" from the workbench", "the driver is a product of its own")
        next
    }
    if (quoted && name ~ /\//) {
        tell(where, "includes \"" name "\" by a path", "include by bare file name; a room exposes its own folder")
    }
    if (!(plain in owner)) {
        if (quoted && (plain in driver_header))
            tell(where, "takes \"" name "\" from the bundled driver", "the workbench knows drivers through ODBC alone")
        next
    }
    if (!quoted && name ~ /\//) next
    target = room_of(owner[plain])
    if (target != room) {
        if (!((room, target) in allowed))
            tell(where, "lets " room " include \"" plain "\" of " target,
                 "arrows run only downward: move what both need below, or hang it on from app")
        else {
            included[room, target] = 1
            ++crossings
            crossing_from[crossings] = room
            crossing_to[crossings] = target
            crossing_place[crossings] = where
        }
    }
    from = unit(file)
    to = unit(owner[plain])
    if (from != to && !((from, to) in edge_place)) {
        if (!(from in out)) order[++units] = from
        next_unit[from, ++out[from]] = to
        edge_place[from, to] = where
    }
}

END {
    # What a room names behind USES hands on what it uses itself.
    closed = 0
    for (pair in uses) road[pair] = 1
    while (!closed) {
        closed = 1
        for (a in known) for (b in known) if ((a, b) in road) for (c in known)
            if (((b, c) in road) && !((a, c) in road)) { road[a, c] = 1; closed = 0 }
    }
    for (i = 1; i <= crossings; ++i) {
        a = crossing_from[i]; b = crossing_to[i]
        if (!((a, b) in road))
            tell(crossing_place[i], "uses " b ", to which CMake gives " a " no road",
                 "add quorvane_" b " behind USES in " list_of(a))
    }
    for (pair in uses) {
        split(pair, part, SUBSEP)
        if ((part[1] in filled) && (part[2] in filled) && !(pair in included) && (pair in allowed))
            tell(uses_place[pair], "draws an arrow from " part[1] " to " part[2] " that no include follows", "take it out")
    }
    for (i = 1; i <= units; ++i) if (state[order[i]] == "") walk(order[i])
}
