"""Makes the manual's pages one HTML file that needs nothing beside it.

    single_page.py VERSION OUTPUT
"""
import base64
import pathlib
import re
import sys

import markdown

PAGES = ["index", "backup", "restore", "floppies", "maintenance", "jobs", "check-sets", "messages", "log", "installing",
         "rights", "../../CHANGELOG"]
FOLDER = pathlib.Path(__file__).parent


def slug(text, separator="-"):
    return re.sub(r"[^a-z0-9]+", separator, text.lower()).strip(separator)


def title_of(page):
    return page.split("\n", 1)[0].lstrip("# ")


def embed(match):
    picture = (FOLDER / match[1]).read_bytes()
    return f'src="data:image/png;base64,{base64.b64encode(picture).decode()}"'


def link_messages(html):
    """Gives each row of the message table an anchor, and links the numbers that stand elsewhere to it."""
    row = re.compile(r"(<tr>\s*<td)>(6\d{4})<")
    before, heading, after = html.partition('<h1 id="messages">')
    after = row.sub(r'\1 id="m\2">\2<', after)
    known = set(re.findall(r'id="m(\d+)"', after))
    number = re.compile(r"""(?<![\w"#])(?<!id="m\d{5}">)\b(6\d{4})\b(?!")""")

    def link(found):
        return f'<a href="#m{found[1]}">{found[1]}</a>' if found[1] in known else found[1]

    return number.sub(link, before) + heading + number.sub(link, after)


def main(version, output):
    pages = {name: (FOLDER / f"{name}.md").read_text(encoding="utf-8") for name in PAGES}
    converter = markdown.Markdown(
        extensions=["tables", "fenced_code", "toc"],
        extension_configs={"toc": {"toc_depth": "1-2", "slugify": slug}},
    )
    body = converter.convert("\n\n".join(pages.values()))
    for name, page in pages.items():
        body = body.replace(f'href="{name}.md"', f'href="#{slug(title_of(page))}"')
    left = re.findall(r'href="[^"#]*\.md[^"]*"', body)
    if left:
        sys.exit(f"links that lead out of the manual: {left}")
    body = re.sub(r'src="(images/[^"]+)"', embed, link_messages(body))  # the pictures' text is no text
    style = (FOLDER / "style.css").read_text(encoding="utf-8")
    pathlib.Path(output).write_text(
        f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>QXBackupUtility {version}: manual</title>
<style>
{style}</style>
</head>
<body>
<nav aria-label="Contents"><p>QXBackupUtility {version}</p>
{converter.toc}
</nav>
<main>
{body}
</main>
</body>
</html>
""",
        encoding="utf-8",
        newline="\r\n",
    )


if __name__ == "__main__":
    main(*sys.argv[1:])
