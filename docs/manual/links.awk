# Filter for the headers of the interfaces: the slot becomes part of an operation's brief
# description, and "slot 12" in a text becomes a link to the operation there. Keeps line numbers.
FNR == 1 { ++pass; class = FILENAME; sub(/.*\//, "", class); sub(/\.h$/, "", class) }
pass == 1 {
    if (match($0, /^    \/\/\/ Slot [0-9]+\./)) slot = $3 + 0
    if (/^    virtual / && slot) {
        name[slot] = $0
        sub(/\(.*/, "", name[slot])
        sub(/.*[ *&]/, "", name[slot])
        slot = 0
    }
    next
}
{
    out = ""
    rest = $0
    if (match(rest, /^    \/\/\/ Slot [0-9]+\. /)) {
        out = substr(rest, 1, RLENGTH - 2) ": "
        rest = substr(rest, RLENGTH + 1)
    }
    while (/^ *\/\/\// && match(rest, /[Ss]lot [0-9]+/)) {
        text = substr(rest, RSTART, RLENGTH)
        number = substr(text, 6) + 0
        out = out substr(rest, 1, RSTART - 1)
        out = out (number in name ? "@link " class "::" name[number] " " text "@endlink" : text)
        rest = substr(rest, RSTART + RLENGTH)
    }
    print out rest
}
