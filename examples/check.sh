#!/bin/sh
# check.sh PROGRAM EXPECTED: fails unless the program succeeds and prints just what the file holds.
output=$("$1") || { echo "$1 failed"; exit 1; }
printf '%s\n' "$output" | diff -u "$2" -
