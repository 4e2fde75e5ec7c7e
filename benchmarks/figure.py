"""A measured figure as a line of tab-separated columns; Figure.h prints the same format."""

import dataclasses


@dataclasses.dataclass(frozen=True)
class Figure:
    what: str
    size: str
    value: float
    unit: str
    reference: str = ""
    ratio: float | None = None

    @classmethod
    def parse(cls, line):
        """None if the line is not a figure."""
        columns = line.rstrip("\n").split("\t")
        if len(columns) != 6:
            return None
        what, size, value, unit, reference, ratio = columns
        return cls(what, size, float(value), unit, reference, float(ratio) if ratio else None)

    def print(self):
        ratio = "" if self.ratio is None else f"{self.ratio:f}"
        print(self.what, self.size, f"{self.value:f}", self.unit, self.reference, ratio, sep="\t",
              flush=True)
