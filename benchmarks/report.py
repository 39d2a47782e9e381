"""Tables of figures beside goals, as Markdown."""

SIZES = ("small", "medium", "large")


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
    """Lines that are printed as they come, kept, and counted where they have a goal."""

    def __init__(self, *columns):
        """A column is its head and its width; numbers stand to the right where the width is negative."""
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
        """The last line counts the goals that are met."""
        self.lines += ["", "{} of {} goals met.".format(sum(self.verdicts), len(self.verdicts))]
        print("\n".join(self.lines[-2:]), flush=True)


def by_size(figures, goals, show=shown):
    """One figure, or one for each of the three sizes."""
    sizes = SIZES if set(goals) & set(SIZES) else goals
    return " / ".join(show(figures[size]) if size in goals else "–" for size in sizes)


def goals_table(results):
    """Prints and returns the table of operations; with each result its verdicts."""
    table = Table(
        ("Operation", 52),
        ("Case", 21),
        ("Against", 27),
        ("Microseconds", -25),
        ("Ratio", -22),
        ("Goal", -18),
        ("Verdict", 24),
    )
    kept, before = [], None
    for result in results:
        head = (result.operation, result.case)
        operation = "" if before and before[0] == head[0] else head[0]
        case = "" if before == head else head[1]
        before = head
        table.add(
            operation,
            case,
            result.against,
            by_size({size: 1e6 * seconds for size, seconds in result.seconds.items()}, result.goals),
            by_size(result.ratios, result.goals),
            by_size(result.goals, result.goals, "{:g}".format),
            by_size(
                {size: table.verdict(result.ratios[size], goal) for size, goal in result.goals.items()},
                result.goals,
                str,
            ),
        )
        kept.append(result)
    table.close()
    return table, kept
