#!/usr/bin/env bash
# Refreshes the manual's pictures from the screenshots that `./run --unattended`
# leaves in build/screenshots: the window alone, without the screen around it.
set -euo pipefail
cd "$(dirname "$0")/../.."

# The numbers of the demonstration's steps; it prints them with what each shows.
pictures=(01:sign-in 02:main-menu 03:backup 04:destination 06:backup-complete 07:restore
          08:confirm-ip-counter 09:restore-complete 10:maintenance 15:confirm-unprotected
          55:next-disk 56:wrong-disk)

rm -f docs/manual/images/*.png
for picture in "${pictures[@]}"; do
  # The black around the windows becomes transparent, so that it suits a dark page and paper.
  convert "build/screenshots/${picture%%:*}.png" -alpha set -fill none -fuzz 1% -floodfill +0+0 black -trim \
    +repage -strip -define png:compression-level=9 -define png:exclude-chunk=date,time "docs/manual/images/${picture#*:}.png"
done
du -sh docs/manual/images
