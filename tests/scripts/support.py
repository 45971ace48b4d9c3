"""Loads a script of scripts/, which has no .py at its end, as a module."""

import importlib.machinery
import importlib.util
import pathlib
import sys

SCRIPTS = pathlib.Path(__file__).resolve().parent.parent.parent / "scripts"


def load_script(name):
    sys.dont_write_bytecode = True
    loader = importlib.machinery.SourceFileLoader(name, str(SCRIPTS / name))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(module)
    return module
