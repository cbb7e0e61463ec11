#!/usr/bin/env bash
# Makes the manual one HTML file.
#
#   docs/manual/build.sh [FILE] [--help]      (build/manual/QXBackupUtility.html)
output=$(realpath -m -- "${1:-$(dirname "$0")/../../build/manual/QXBackupUtility.html}")
cd "$(dirname "$0")/../.."
source scripts/lib.sh
arguments 1 "$@"
mkdir -p "$(dirname "$output")"
# Debian's interpreter, which knows Debian's packages, whatever stands before it on PATH.
/usr/bin/python3 docs/manual/single_page.py "$(project_version)" "$output"
