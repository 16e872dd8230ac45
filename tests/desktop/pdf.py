"""Makes documents for viewers."""


def pdf(*pages, height=842, margin=62):
    """Each page's lines, below the margin at its top, in 14 point Helvetica."""
    kids = range(4, 4 + 2 * len(pages), 2)
    objects = [
        "<</Type/Catalog/Pages 2 0 R>>",
        f"<</Type/Pages/Kids[{' '.join(f'{number} 0 R' for number in kids)}]/Count {len(pages)}>>",
        "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>",
    ]
    for number, lines in zip(kids, pages):
        objects += [
            f"<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 {height}]/Contents {number + 1} 0 R"
            "/Resources<</Font<</F1 3 0 R>>>>>>",
            _stream(lines, height - margin),
        ]
    return _file(objects)


def _stream(lines, top):
    drawn = "".join(f"1 0 0 1 60 {top - 30 * n} Tm ({line}) Tj " for n, line in enumerate(lines))
    content = f"BT /F1 14 Tf {drawn}ET"
    return f"<</Length {len(content)}>>stream\n{content}\nendstream"


def _file(objects):
    out, offsets = "%PDF-1.4\n", []
    for number, content in enumerate(objects, 1):
        offsets.append(len(out))
        out += f"{number} 0 obj{content}endobj\n"
    count = len(objects) + 1
    table = "".join(f"{offset:010} 00000 n \n" for offset in offsets)
    return (f"{out}xref\n0 {count}\n0000000000 65535 f \n{table}trailer<</Size {count}/Root 1 0 R>>\n"
            f"startxref\n{len(out)}\n%%EOF\n").encode("latin-1")
