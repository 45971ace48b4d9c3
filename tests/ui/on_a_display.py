"""A test program on a display of its own, which copies dots by itself: what it shows may be other than what the program
has in memory."""

import subprocess
import sys

from desktop import Desktop

desktop = Desktop()
try:
    environment = {**desktop.environment, "VELK_ON_A_DISPLAY": "1"}
    sys.exit(subprocess.run(sys.argv[1:], env=environment, check=False).returncode)
finally:
    desktop.close()
