"""What fails, as exceptions."""


class Fault(Exception):
    """A failure of a member: number, source (the member), text, as ErrorMsg tells them."""

    def __init__(self, number: int, source: str, text: str) -> None:
        super().__init__(number, source, text)
        self.number = number
        self.source = source
        self.text = text

    def __str__(self) -> str:
        return f"{self.source}: {self.text} ({self.number})"


class ExpressionError(Exception):
    """A mistake in a formula: number, position from 1 (0 for none), text; shown with a caret under the place."""

    def __init__(self, number: int, position: int, text: str, shown: str) -> None:
        super().__init__(number, position, text, shown)
        self.number = number
        self.position = position
        self.text = text
        self.shown = shown

    def __str__(self) -> str:
        return "\n" + self.shown
