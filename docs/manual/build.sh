#!/usr/bin/env bash
# Makes the manual one HTML file: build/manual/QXBackupUtility.html, or $1.
set -euo pipefail
cd "$(dirname "$0")"
output=${1:-../../build/manual/QXBackupUtility.html}
version=$(sed -nE 's/^project\(.* VERSION ([0-9.]+).*/\1/p' ../../CMakeLists.txt)
mkdir -p "$(dirname "$output")"
# Debian's interpreter, which knows Debian's packages, whatever stands before it on PATH.
/usr/bin/python3 single_page.py "$version" "$output"
