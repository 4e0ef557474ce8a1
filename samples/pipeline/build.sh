#!/bin/sh
# A pipeline that keeps the sources free of line numbers and ships builds with them: checks the tree, writes
# numbered sources and their map for the compiler, and looks the lines up that a crash report names.
#
# Usage: build.sh PROJECT OUTPUT [REPORT]
#   PROJECT  what lintara opens: a project, a group, or a folder of modules
#   OUTPUT   the folder for the numbered sources and lintara-map.json
#   REPORT   a file with lines such as "Error 11 in Totals.Add, Erl 10035"
# What handlers and numbers are to be is in the project's .lintara.toml; line-numbers = false keeps the sources
# free of numbers.
# Exit status: 0; 1 when the tree is not as .lintara.toml wants it, or no line has a number of the report;
# 2 and above when lintara failed.
set -eu

if [ $# -lt 2 ] || [ $# -gt 3 ]; then
    echo 'usage: build.sh PROJECT OUTPUT [REPORT]' >&2
    exit 2
fi
project=$1
output=$2
report=${3-}

# 1. The tree is as the team wants it: findings end the pipeline.
lintara check "$project"

# 2. Numbered sources with their map. The compiler gets the folder, the archive of the release the map.
lintara insert "$project" --line-numbers --output "$output"

# 3. What a crash report names, in the sources.
[ -n "$report" ] || exit 0
missing=0
places=$(sed -n 's/.* in \([^ .]*\)\.\([^ ,]*\), Erl \([0-9][0-9]*\).*/\1 \2 \3/p' "$report")
while read -r component procedure number; do
    [ -n "$component" ] || continue
    lintara where "$project" --map "$output/lintara-map.json" \
        --component "$component" --procedure "$procedure" --erl "$number" || missing=$?
done <<EOF
$places
EOF
exit "$missing"
