"""Requirements on recorded signals, from text to verdicts.

>>> import vorm
>>> run = vorm.assess(vorm.parse(text), frame)
>>> run.verdicts
"""

from vorm._assess import assess, check
from vorm._data import Signal
from vorm._errors import Error, Failed
from vorm._formula import evaluate, intervals
from vorm._requirements import Requirements, load, parse
from vorm._run import Result, Run
from vorm._vorm import version as __version__

__all__ = [
    "Error",
    "Failed",
    "Requirements",
    "Result",
    "Run",
    "Signal",
    "assess",
    "check",
    "evaluate",
    "intervals",
    "load",
    "parse",
]

for _name in __all__:
    globals()[_name].__module__ = "vorm"
del _name
