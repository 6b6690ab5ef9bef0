"""Serves the files of a folder to this machine alone, on a free port, whose number it prints."""

import functools
import http.server
import os
import sys

from processes import end_with_parent


class Quiet(http.server.SimpleHTTPRequestHandler):
    """Says nothing of each request."""

    def log_message(self, *_):
        pass


if __name__ == "__main__":
    end_with_parent()
    handler = functools.partial(Quiet, directory=sys.argv[1])
    with http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler) as server:
        print(server.server_address[1], flush=True)
        # Whoever started this reads one line and then waits for the end of the output.
        os.close(1)
        server.serve_forever()
