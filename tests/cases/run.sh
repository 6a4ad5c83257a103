#!/bin/bash
# Runs one end-to-end case: kst [params] document.xml style.xsl output.out in a copy of the case
# directory, then compares the output file with expected.out and standard error after the
# banner with expected.err. See README.md. Usage: run.sh <kst> <case directory>.
set -u
kst=$1
case_dir=$2
banner_lines=4

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -R "$case_dir"/. "$work"/
rm -f "$work"/expected.out "$work"/expected.err "$work"/params
cd "$work" || exit 2

args=()
if [ -f "$case_dir/params" ]; then
    while IFS= read -r line || [ -n "$line" ]; do
        [ -n "$line" ] && args+=("$line")
    done < "$case_dir/params"
fi

"$kst" "${args[@]}" document.xml style.xsl output.out 2>stderr.full >stdout.txt
status=$?
tail -n +$((banner_lines + 1)) stderr.full | sed "s|$work|<dir>|g" > stderr.txt

failed=0
expected_err=/dev/null
[ -f "$case_dir/expected.err" ] && expected_err=$case_dir/expected.err
if ! cmp -s "$expected_err" stderr.txt; then
    echo "standard error differs (expected, actual):"
    diff "$expected_err" stderr.txt | head -40
    failed=1
fi

expected_status=0
grep -qx 'Processing terminated.' "$expected_err" && expected_status=1
if [ "$status" != "$expected_status" ]; then
    echo "exit status $status, expected $expected_status"
    failed=1
fi

if [ -f "$case_dir/expected.out" ]; then
    if [ ! -f output.out ]; then
        echo "no output file was written"
        failed=1
    elif ! cmp -s "$case_dir/expected.out" output.out; then
        echo "output differs (expected, actual):"
        diff "$case_dir/expected.out" output.out | head -40
        failed=1
    fi
elif [ -f output.out ] && [ -s output.out ]; then
    echo "an output file was written where none was expected:"
    head -c 2000 output.out
    failed=1
fi
exit $failed
