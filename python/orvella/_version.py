"""The version of the module, which is the library's (a test compares them)."""

__version__ = "0.1.0"
