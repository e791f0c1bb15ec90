"""Runs brimlo-fetch, which fetches the update feed, against servers that behave well and badly.
Exits with 1 if anything is not as it should be.

usage: fetch.py BRIMLO_FETCH"""

import contextlib
import http.server
import os
import pathlib
import ssl
import subprocess
import sys
import tempfile
import threading

FEED = b"<rss><channel/></rss>"
PORTS = {}


class Server(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        status, body, location = {
            "/feed": (200, FEED, ""),
            "/moved": (302, b"", f"https://localhost:{PORTS['good']}/feed"),
            "/downgraded": (302, b"", f"http://localhost:{PORTS['plain']}/feed"),
            "/huge": (200, b"x" * (1 << 21), "")}.get(self.path, (404, b"", ""))
        self.send_response(status)
        self.send_header("Location", location)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        with contextlib.suppress(OSError):  # the peer may have had enough
            self.wfile.write(body)

    def log_message(self, *_):
        pass


def serve(name, certificate=None):
    server = http.server.ThreadingHTTPServer(("localhost", 0), Server)
    if certificate:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate)
        server.socket = context.wrap_socket(server.socket, server_side=True)
    PORTS[name] = server.server_port
    threading.Thread(target=server.serve_forever, daemon=True).start()


def main():
    faults = 0
    with tempfile.TemporaryDirectory() as folder:
        own = pathlib.Path(folder, "certificate.pem")
        own.write_bytes(subprocess.run(
            ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj",
             "/CN=localhost", "-addext", "subjectAltName=DNS:localhost", "-keyout", "-"],
            check=True, capture_output=True).stdout)
        serve("good", own)
        serve("plain")
        trusting = dict(os.environ, SSL_CERT_FILE=str(own))
        for what, address, env, status in (
                ("a feed", "https://localhost:{good}/feed", trusting, 0),
                ("a feed that has moved", "https://localhost:{good}/moved", trusting, 0),
                ("moved to plain HTTP", "https://localhost:{good}/downgraded", trusting, 4),
                ("plain HTTP", "http://localhost:{plain}/feed", trusting, 4),
                ("too long", "https://localhost:{good}/huge", trusting, 5),
                ("not there", "https://localhost:{good}/gone", trusting, 3),
                ("nobody's certificate", "https://localhost:{good}/feed", os.environ, 3),
                ("another's certificate", "https://127.0.0.1:{good}/feed", trusting, 3)):
            done = subprocess.run([sys.argv[1], address.format(**PORTS), "test"], env=env,
                                  capture_output=True, timeout=60)
            held = done.returncode == status and (done.stdout == FEED) == (status == 0)
            print("  ok   " if held else "  FAULT", f"{what}: {done.returncode}",
                  done.stderr.decode().strip())
            faults += not held
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
