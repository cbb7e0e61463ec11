"""Refreshes the manual's pictures from the screenshots that `./run --unattended` leaves in build/screenshots: the window
alone, without the screen around it. Out of some it makes the animation at the head of the README.

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

# The main job, in the order of a day: what the animation shows, and for how many milliseconds each.
AT_WORK = ["sign-in", "main-menu", "backup", "destination", "backup-complete", "restore", "restore-complete", "past-jobs"]
EACH = 1600
BEHIND = (64, 80, 96)
MARGIN = 12


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


def animate(names, target):
    """One picture after the other, each in the middle of the same ground."""
    pictures = [Image.open(PICTURES / f"{name}.png").convert("RGBA") for name in names]
    size = [max(picture.size[side] for picture in pictures) + 2 * MARGIN for side in (0, 1)]
    frames = []
    for picture in pictures:
        frame = Image.new("RGB", size, BEHIND)
        frame.paste(picture, [(size[side] - picture.size[side]) // 2 for side in (0, 1)], picture)
        frames.append(frame.quantize(64))
    frames[0].save(target, save_all=True, append_images=frames[1:], duration=EACH, loop=0, optimize=True)


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
    animate(AT_WORK, ROOT / "docs/images/at-work.gif")
    return 0


if __name__ == "__main__":
    sys.exit(main())
