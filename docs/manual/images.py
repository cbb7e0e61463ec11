"""Refreshes the manual's pictures from the screenshots that `./run --unattended` leaves in build/screenshots: the window
alone, without the screen around it.

docs/manual/images.sh installs what this needs and calls it.
"""
import pathlib
import sys

from PIL import Image, ImageChops, ImageDraw

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCREENSHOTS = ROOT / "build/screenshots"
PICTURES = ROOT / "docs/manual/images"

# The numbers of the demonstration's steps; it prints them with what each shows.
STEPS = {
    1: "sign-in", 2: "main-menu", 3: "backup", 4: "destination", 6: "backup-complete", 7: "restore",
    8: "confirm-ip-counter", 9: "restore-complete", 10: "maintenance", 15: "confirm-unprotected",
    19: "past-jobs", 55: "next-disk", 56: "wrong-disk",
}
NEARLY_BLACK = 2  # of 255
WATCHED = "progress-"  # what watch.exe takes of jobs at work, on a workstation with more data


def cut_out(screenshot):
    """The black around the windows becomes transparent, so that it suits a dark page and paper, and is cut off."""
    screen = Image.open(screenshot).convert("RGB")
    filled = screen.copy()
    around = (255, 0, 255)
    ImageDraw.floodfill(filled, (0, 0), around, thresh=NEARLY_BLACK)
    changed = ImageChops.difference(screen, filled).convert("L").point(lambda value: 255 if value else 0)
    windows = ImageChops.invert(changed)
    screen.putalpha(windows)
    return screen.crop(windows.getbbox())


def main():
    missing = [step for step in STEPS if not (SCREENSHOTS / f"{step:02}.png").exists()]
    if missing:
        print(f"!! no screenshots of the steps {missing}; ./run --unattended takes them", file=sys.stderr)
        return 1
    for old in PICTURES.glob("*.png"):
        if not old.name.startswith(WATCHED):
            old.unlink()
    for step, name in STEPS.items():
        cut_out(SCREENSHOTS / f"{step:02}.png").save(PICTURES / f"{name}.png", optimize=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
