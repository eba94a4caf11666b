"""How long to look for faults: ORVELLA_EXAMPLES random cases per test."""

import os

from hypothesis import settings

settings.register_profile("orvella", max_examples=int(os.environ.get("ORVELLA_EXAMPLES", "300")), deadline=None, database=None)
settings.load_profile("orvella")
