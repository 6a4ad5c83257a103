#!/bin/sh
# Runs the script benchmarks through kst-script and duk in the same session and prints the
# best user time of three runs of each.  Usage: compare.sh KST-SCRIPT [BENCH-DIR]
tool=${1:?path of kst-script}
dir=${2:-/work/shared/bench/script}
best() {
    b=999
    for run in 1 2 3; do
        t=$( { /usr/bin/time -f "%U" "$@" > /dev/null; } 2>&1 | tail -1 )
        b=$(echo "$t $b" | awk '{ print ($1 < $2) ? $1 : $2 }')
    done
    echo "$b"
}
printf "%-20s %8s %8s\n" benchmark kst duk
for f in "$dir"/*.js; do
    printf "%-20s %8s %8s\n" "$(basename "$f")" "$(best "$tool" "$f")" "$(best duk "$f")"
done
