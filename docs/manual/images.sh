#!/usr/bin/env bash
# Refreshes the manual's pictures from the screenshots that `./run --unattended` leaves in build/screenshots.
#
#   docs/manual/images.sh [--help]
cd "$(dirname "$0")/../.."
source scripts/lib.sh
arguments 0 "$@"
need_build_folder
install_tools python3-pil
# Debian's interpreter, which knows Debian's packages, whatever stands before it on PATH.
/usr/bin/python3 docs/manual/images.py
