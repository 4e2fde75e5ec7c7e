"""A local website on the default HTTP port."""

import http.server
import struct
import threading
import zlib

from network import HTTP_PORT


class WebServer:
    """Serves the same icon for every path on 127.0.0.1, and records the paths."""

    def __init__(self, icon):
        server = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                server.paths.append(self.path)
                self.send_response(200)
                self.send_header("Content-Length", str(len(icon)))
                self.end_headers()
                self.wfile.write(icon)

            def log_message(self, *_):
                pass

        self.paths = []
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", HTTP_PORT), Handler)
        threading.Thread(target=self._server.serve_forever, daemon=True).start()

    def close(self):
        self._server.shutdown()
        self._server.server_close()


def png(color, side=32):
    """A square in one colour, given as (red, green, blue)."""
    def chunk(kind, data):
        checksum = zlib.crc32(kind + data)
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", checksum)

    header = struct.pack(">IIBBBBB", side, side, 8, 2, 0, 0, 0)
    rows = zlib.compress((b"\0" + bytes(color) * side) * side)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", rows) +
            chunk(b"IEND", b""))
