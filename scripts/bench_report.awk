# Reads goals, memory figures and the results of Google Benchmark (JSON); prints all measured ratios,
# then the goals with what falls short of them.

# Empty for what was not measured.
function ratioOf(task, peer, size)
{
    if (!((task, peer, size) in time) || !((task, "", size) in time)) return ""
    return time[task, peer, size] / time[task, "", size]
}

function row(kind, task, against, size, value, goal, falls)
{
    if (value == "") { value = "-"; mark = "not measured" }
    else { value = sprintf("%.2f", value); mark = falls ? "FALLS SHORT" : "" }
    printf "%-7s %-24s %-18s %8s %9s %8s  %s\n", kind, task, against, size, value, goal, mark
}

FILENAME ~ /goals/ {
    if ($1 == "peer" || $1 == "growth" || $1 == "memory") goals[++goalCount] = $0
    next
}
FILENAME ~ /memory/ { bytes[$1, $2] = $3; next }

/"run_name":/ {
    split($0, quoted, "\"")
    name = quoted[4]
    aggregate = ""
    treeBytes = ""
}
/"aggregate_name":/ { split($0, quoted, "\""); aggregate = quoted[4] }
/"cpu_time":/ { cpu = $2 + 0 }
/"time_unit":/ { split($0, quoted, "\""); timeUnit = quoted[4] }
/"bytes_per_rect":/ { treeBytes = $2 + 0 }
/^ *}/ && aggregate == "median" {
    aggregate = ""
    split(name, part, "/")
    task = part[1]; contender = part[2]; size = part[3]
    if (contender == "calcora" || contender == "CRTree") {
        time[task, "", size] = cpu
        unit[task, size] = timeUnit
        order[++rows] = sprintf("%s %9d", task, size)
        if (treeBytes != "") bytes["tree_" task, size] = treeBytes
    } else {
        time[task, contender, size] = cpu
        peers[task, size] = peers[task, size] " " contender
    }
}

END {
    print "\ntimes of the peers as multiples of ours"
    for (i = 2; i <= rows; ++i)
        for (k = i; k > 1 && order[k] < order[k - 1]; --k) {
            kept = order[k]; order[k] = order[k - 1]; order[k - 1] = kept
        }
    for (i = 1; i <= rows; ++i) {
        split(order[i], key, " ")
        line = sprintf("%-24s %8s %10.4g %s ", key[1], key[2], time[key[1], "", key[2]],
                       unit[key[1], key[2]])
        n = split(peers[key[1], key[2]], names, " ")
        for (k = 1; k <= n; ++k)
            line = line sprintf("  %s %.2f", names[k], ratioOf(key[1], names[k], key[2]))
        print line
    }
    print "\ngoals"
    printf "%-7s %-24s %-18s %8s %9s %8s\n", "kind", "task", "against", "size", "measured", "goal"
    for (i = 1; i <= goalCount; ++i) {
        split(goals[i], g, " ")
        kind = g[1]; task = g[2]
        if (kind == "peer") {
            sizes = split(g[4], sizeOf, ",")
            contenders = split(g[3], peerOf, ",")
            for (s = 1; s <= sizes; ++s) {
                least = ""  # the fastest of the peers
                for (c = 1; c <= contenders; ++c) {
                    ratio = ratioOf(task, peerOf[c], sizeOf[s])
                    if (ratio != "" && (least == "" || ratio < least)) least = ratio
                }
                row(kind, task, g[3], sizeOf[s], least, g[5], least < g[5])
            }
        } else if (kind == "growth") {
            split(g[3], sizeOf, ",")
            small = time[task, "", sizeOf[1]]; large = time[task, "", sizeOf[2]]
            value = small > 0 && large > 0 ? large / sizeOf[2] / (small / sizeOf[1]) : ""
            row(kind, task, "itself", sizeOf[2], value, g[4], value > g[4])
        } else {
            sizes = split(g[3], sizeOf, ",")
            for (s = 1; s <= sizes; ++s) {
                value = bytes[task, sizeOf[s]]
                row(kind, task, "bytes each", sizeOf[s], value, g[4] "-" g[5],
                    value < g[4] || value > g[5])
            }
        }
    }
}
