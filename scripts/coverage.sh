#!/usr/bin/env bash
# Runs all tests in a build that counts, and tells which lines and branches of the module they miss.
#   scripts/coverage.sh       a table by folder; build/coverage/missed.txt names what is missed
set -euo pipefail
"$(dirname "$0")/setup.sh" coverage
source "$(dirname "$0")/lib.sh"

say "coverage build"
build coverage
find build/coverage -name '*.gcda' -delete
say "tests"
quietly build/coverage/manual.log build/coverage/bin/calcora_manual docs/calcora.md build/coverage
quietly build/coverage/tests.log ctest --preset coverage -j "$jobs"
say "counting"
python3 - "$root" <<'PYTHON'
import collections, glob, json, linecache, re, subprocess, sys

root = sys.argv[1] + '/'
# Lines on which ways are the compiler's own: ends of scopes, lists of values, statics, vectors.
no_condition = re.compile(r'[\s{}()\[\];,]*$|.*(= default;|_mm_|__m128d|\{")|\s*(static|assert)\b')
folders = ('frame', 'common', 'datageo', 'rtree', 'geometric', 'geosetup', 'unit', 'host', 'app')
lines = collections.defaultdict(int)  # (file, line): how often run
branches = {}                         # (file, line): how often each way was taken
counters = glob.glob('build/coverage/**/*.gcda', recursive=True)
for start in range(0, len(counters), 40):
    told = subprocess.run(['gcov', '--json-format', '--branch-probabilities', '--stdout',
                           *counters[start:start + 40]], capture_output=True, text=True).stdout
    for unit in map(json.loads, told.splitlines()):
        for file in unit['files']:
            name = file['file'].removeprefix(root)
            if not name.startswith(folders):
                continue
            for line in file['lines']:
                place = name, line['line_number']
                lines[place] += line['count']
                ways = [b['count'] for b in line['branches'] if not b['throw']]
                if no_condition.match(linecache.getline(name, place[1])):
                    ways = []
                known = branches.get(place, [])
                # A line may stand for several instances, of which some have no second way.
                if len(known) == len(ways):
                    ways = [a + b for a, b in zip(known, ways)]
                if len(ways) >= len(known):
                    branches[place] = ways

rows = collections.defaultdict(lambda: [0] * 4)
with open('build/coverage/missed.txt', 'w') as missed:
    for place in sorted(lines):
        row = rows[place[0].split('/')[0]]
        ways = branches.get(place, [])
        for i, n in enumerate((lines[place] > 0, 1, sum(w > 0 for w in ways), len(ways))):
            row[i] += n
        if lines[place] == 0 and linecache.getline(*place).strip() != '}':
            print('%s:%d: not run' % place, file=missed)
        elif 0 in ways:
            print('%s:%d: %d of %d ways not taken' % (*place, ways.count(0), len(ways)), file=missed)
print('%-10s %8s %8s' % ('', 'lines', 'branches'))
rows['all'] = [sum(row[i] for row in rows.values()) for i in range(4)]
for name, row in rows.items():
    print('%-10s %7.2f%% %7.2f%%' % (name, 100 * row[0] / row[1], 100 * row[2] / max(row[3], 1)))
PYTHON
say "missed: build/coverage/missed.txt ($(wc -l <build/coverage/missed.txt) lines)"
