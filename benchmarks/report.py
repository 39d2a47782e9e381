"""Tables of figures and their verdicts, as Markdown."""


def shown(number):
    """A figure with two digits after the point, or as many as tell it from 0."""
    if number is None:
        return "–"
    if number >= 100:
        return "{:,.0f}".format(number)
    return "{:.2f}".format(number) if number >= 0.095 else "{:.2g}".format(number)


def is_met(figure, goal):
    return figure is not None and figure <= goal


class Table:
    """Lines that are printed as they come and kept, and a count of verdicts."""

    def __init__(self, *columns):
        """A column is its head and its width, negative where the cells stand to the right."""
        self.widths = [width for _, width in columns]
        self.lines, self.verdicts = [], []
        self.add(*[head for head, _ in columns])
        self.add(*["-" * width if width > 0 else "-" * (-width - 1) + ":" for width in self.widths])

    def add(self, *cells):
        formats = ["{{:{}{}}}".format("<" if width > 0 else ">", abs(width)) for width in self.widths]
        self.lines.append("| " + " | ".join(one.format(cell) for one, cell in zip(formats, cells)) + " |")
        print(self.lines[-1], flush=True)

    def verdict(self, figure, goal):
        self.verdicts.append(is_met(figure, goal))
        return "met" if self.verdicts[-1] else "missed"

    def close(self):
        self.lines += ["", "{} of {} goals met.".format(sum(self.verdicts), len(self.verdicts))]
        print("\n".join(self.lines[-2:]), flush=True)
