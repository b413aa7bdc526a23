# The operations of an interface header as a table: slot, name, first sentence of the comment.
#   awk -v class=IUnit [-v only="name name ..."] -f slot_table.awk IUnit.h
BEGIN {
    count = split(only, list, " ")
    for (i = 1; i <= count; ++i) wanted[list[i]] = 1
    print "| slot | operation | |\n|---|---|---|"
}
/^    \/\/\/ Slot [0-9]+\. / { slot = $3 + 0; text = ""; first = 1 }
slot && /^    \/\/\// {
    line = $0
    sub(/^    \/\/\/ ?/, "", line)
    if (line == "") first = 0  # the first paragraph ended
    if (first) text = text (text == "" ? "" : " ") line
}
slot && /^    virtual / {
    name = $0
    sub(/\(.*/, "", name)
    sub(/.*[ *&]/, "", name)
    sub(/^Slot [0-9]+\. /, "", text)
    # A full stop before a space and a capital letter ends the sentence.
    if (match(text, /[.:] +[A-Z@*(]/)) text = substr(text, 1, RSTART - 1)
    sub(/[.:]$/, "", text)
    gsub(/\|/, "\\|", text)
    if (!count || wanted[name]) {
        printf "| %d | @ref %s::%s \"%s\" | %s |\n", slot, class, name, name, text
        ++rows
    }
    slot = 0
}
END {
    if (!rows) { print class ": no operations of " only > "/dev/stderr"; exit 1 }
}
