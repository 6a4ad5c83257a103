#!/bin/bash
# Runs kst for one named command-line case and compares standard error (after the four banner
# lines) and the exit status. Usage: run.sh <kst> <case>. Runs in a fresh directory, whose path
# shows as <dir> in expected texts.
set -u
kst=$1
name=$2

banner=$'\nKestrel XSLT Processor version 1.50.00, Standard Edition\nCopyright (c) 1999-2001 The Kestrel Project. All rights reserved.\n\n'
usage=$'Usage: kst [/Pparameter=value ...] document stylesheet output\n'
no_stylesheet=$'Stylesheet retrieval error: \'file://localhost<dir>/style.xsl\' \nCannot access document\nProcessing terminated.\n'

# Each case sets args (the words after "kst"), status and err (standard error after the banner).
case_no_arguments() { args=(); status=1; err=$usage; }
case_too_few_positionals() { args=(doc.xml style.xsl); status=1; err=$usage; }
case_fourth_positional_ends_with_usage() { args=(a b c d); status=1; err=$usage; }
case_fourth_positional_wins_over_later_bad_parameter() { args=(a b c d /Pbad); status=1; err=$usage; }
case_bad_parameter_before_fourth_positional() { args=(/Pbad a b c d); status=1; err=$'Invalid parameter: /Pbad\n'; }
case_parameter_without_equals() { args=(/Pa doc.xml style.xsl out.xml); status=1; err=$'Invalid parameter: /Pa\n'; }
case_dash_parameter_without_equals() { args=(doc.xml -P style.xsl out.xml); status=1; err=$'Invalid parameter: -P\n'; }
case_equals_in_prefix_does_not_count() { args=(-=P=x -P=); status=1; err=$usage; }
case_parameter_forms_are_accepted() {
    args=(/Pa=b=c doc.xml /P=x style.xsl -Pa=1 out.xml /P= -Pq=1+1); status=1; err=$no_stylesheet; }
case_lower_case_p_is_positional() { args=(/pa=1 style.xsl out.xml); status=1; err=$no_stylesheet; }
case_empty_document_name() { args=("" style.xsl out.xml); status=1; err=$'Invalid document file name: \n'; }
case_empty_stylesheet_name() { args=(doc.xml "" out.xml); status=1; err=$'Invalid stylesheet file name: \n'; }
case_empty_output_name() { args=(doc.xml style.xsl ""); status=1; err=$'Invalid output file name: \n'; }
case_non_ascii_bytes_are_sign_extended() {
    args=($'/P\xc3\xa9'); status=1; err=$'Invalid parameter: /P\xef\xbf\x83\xef\xbe\xa9\n'; }
case_overlong_parameter() {
    local long
    long=$(printf '/P%0100000d' 0)
    args=("$long"); status=1; err="Invalid parameter: $long"$'\n'; }
case_directory_as_stylesheet() {
    mkdir style.xsl
    args=(doc.xml style.xsl out.xml); status=1; err=$no_stylesheet; }
case_missing_stylesheet_leaves_output_untouched() {
    printf 'keep' > out.xml
    args=(doc.xml style.xsl out.xml); status=1; err=$no_stylesheet; after='[ "$(cat out.xml)" = keep ]'; }

dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
cd "$dir" || exit 2
after=true
if ! declare -F "case_$name" >/dev/null; then
    echo "unknown case: $name"
    exit 2
fi
"case_$name"
"$kst" "${args[@]}" 2>stderr.txt >stdout.txt
actual_status=$?
expected="$banner${err//<dir>/$dir}"
actual=$(cat stderr.txt; printf x)
actual=${actual%x}
failed=0
if [ "$actual_status" != "$status" ]; then
    echo "exit status $actual_status, expected $status"
    failed=1
fi
if [ "$actual" != "$expected" ]; then
    echo "standard error differs:"
    diff <(printf '%s' "$expected") stderr.txt | head -20
    failed=1
fi
if ! eval "$after"; then
    echo "check failed: $after"
    failed=1
fi
exit $failed
