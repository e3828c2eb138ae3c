#!/bin/sh
# Runs the program with options and an empty environment: no display, no bus, no home directory.
# usage: tests/end_to_end/command_line.sh PROGRAM
set -eu
program=$1
out=$(mktemp) err=$(mktemp)
trap 'rm -f "$out" "$err"' EXIT

# expect STATUS OUTPUT-PATTERN ERROR-PATTERN ARGUMENT: a pattern is of grep, '' stands for no output at all
expect() {
  status=0
  env -i "$program" "$4" >"$out" 2>"$err" || status=$?
  for file in "$out" "$err"; do
    pattern=$([ "$file" = "$out" ] && echo "$2" || echo "$3")
    if [ -z "$pattern" ]; then [ ! -s "$file" ]; else grep -q -- "$pattern" "$file"; fi || status="$status, wrong output"
  done
  [ "$status" = "$1" ] || { echo "FAILED: kavendra $4: status $status"; cat "$out" "$err"; exit 1; }
}

usage='^Usage: kavendra \[--help | --version\]$'
expect 0 "$usage" '' --help
expect 0 "$usage" '' -h
expect 0 '^kavendra [0-9.]*$' '' --version
expect 0 '^kavendra [0-9.]*$' '' -v
expect 2 '' "$usage" --unknown
expect 2 '' "$usage" file
expect 2 '' "$usage" --version=2
