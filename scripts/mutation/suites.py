"""Which tests cover a folder: programs of unit tests, then the cases of tests/cli. The longest folder counts."""

import dataclasses


@dataclasses.dataclass(frozen=True)
class Suite:
    folder: str
    units: tuple = ()
    cases: tuple = ("*",)   # folders of tests/cli
    programs: tuple = ()    # that the cases start


PICTURES = ("heatmap", "fingers", "widget", "report")
COMMANDS = ("tappora", "tappora-record", "tappora-practice", "tappora-paint", "tappora-ask", "tappora-backup")

SUITES = (
    Suite("core", ("core_tests",), programs=COMMANDS),
    Suite("core/practice", ("core_tests", "practice_tests"), ("practice",), ("tappora", "tappora-practice")),
    Suite("core/assistant", ("core_tests", "ask_tests"), ("tool", "mcp", "prompt", "ask"),
          ("tappora", "tappora-ask", "tappora-practice")),
    Suite("drawing", ("drawing_tests", "widget_tests", "picture_tests"), PICTURES, ("tappora", "tappora-paint")),
    Suite("widgets", ("widget_tests",), ("widget", "widgets"), ("tappora", "tappora-paint")),
    Suite("app/common", ("common_tests",), programs=COMMANDS),
    Suite("app/tappora", ("app_tests",), programs=COMMANDS),
    Suite("app/practice", ("practice_tests",), ("practice",), ("tappora", "tappora-practice")),
    Suite("app/paint", ("picture_tests",), PICTURES, ("tappora", "tappora-paint")),
    Suite("app/ask", ("ask_tests",), ("ask", "prompt"), ("tappora", "tappora-ask", "tappora-practice")),
    Suite("app/recorder", ("recorder_tests",), ("record", "control"), ("tappora", "tappora-record")),
    Suite("app/backup", (), ("backup", "restore"), ("tappora", "tappora-backup")),
)


def suite_of(file):
    """The suite that covers a file; None for what has no quick tests, such as windows."""
    fitting = [suite for suite in SUITES if file.startswith(suite.folder + "/")]
    return max(fitting, key=lambda suite: len(suite.folder), default=None)
