"""Runs brimlo-fetch, which fetches the update feed, against servers that behave well and badly.
Exits with 1 if anything is not as it should be.

usage: fetch.py BRIMLO_FETCH"""

import http.server
import os
import pathlib
import ssl
import subprocess
import sys
import tempfile
import threading

FEED = b"<rss><channel/></rss>"


class Server(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        if self.path == "/feed":
            return self.answer(200, FEED)
        if self.path == "/moved":
            return self.answer(302, location=f"https://localhost:{PORTS['good']}/feed")
        if self.path == "/downgraded":
            return self.answer(302, location=f"http://localhost:{PORTS['plain']}/feed")
        if self.path == "/loop":
            return self.answer(302, location="/loop")
        if self.path == "/huge":
            return self.answer(200, b"x" * (1 << 21))
        return self.answer(404)

    def answer(self, status, body=b"", location=None):
        self.send_response(status)
        if location:
            self.send_header("Location", location)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        try:
            self.wfile.write(body)
        except OSError:
            pass  # the peer has had enough

    def log_message(self, *_):
        pass


PORTS = {}


def serve(name, certificate=None):
    server = http.server.ThreadingHTTPServer(("localhost", 0), Server)
    if certificate:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate)
        server.socket = context.wrap_socket(server.socket, server_side=True)
    PORTS[name] = server.server_port
    threading.Thread(target=server.serve_forever, daemon=True).start()


def certificate(folder, name, host):
    path = folder / f"{name}.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                    "-subj", f"/CN={host}", "-addext", f"subjectAltName=DNS:{host}",
                    "-keyout", path, "-out", folder / "part"], check=True, capture_output=True)
    path.write_bytes(path.read_bytes() + (folder / "part").read_bytes())
    return path


def main():
    faults = 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        trusted = certificate(folder, "good", "localhost")
        serve("good", trusted)
        serve("stranger", certificate(folder, "stranger", "localhost"))
        serve("plain")
        env = dict(os.environ, SSL_CERT_FILE=str(trusted))
        for what, address, status in [
                ("a feed", f"https://localhost:{PORTS['good']}/feed", 0),
                ("a feed that has moved", f"https://localhost:{PORTS['good']}/moved", 0),
                ("moved to plain HTTP", f"https://localhost:{PORTS['good']}/downgraded", 4),
                ("plain HTTP", f"http://localhost:{PORTS['plain']}/feed", 4),
                ("a file", "file:///etc/passwd", 4),
                ("too long", f"https://localhost:{PORTS['good']}/huge", 5),
                ("not there", f"https://localhost:{PORTS['good']}/gone", 3),
                ("moved in circles", f"https://localhost:{PORTS['good']}/loop", 3),
                ("nobody's certificate", f"https://localhost:{PORTS['stranger']}/feed", 3),
                ("another's certificate", f"https://127.0.0.1:{PORTS['good']}/feed", 3),
                ("no TLS", f"https://localhost:{PORTS['plain']}/feed", 3)]:
            done = subprocess.run([sys.argv[1], address, "test"], env=env, capture_output=True,
                                  timeout=60)
            held = done.returncode == status and (done.stdout == FEED if status == 0
                                                  else b"rss" not in done.stdout)
            print(("  ok    " if held else "  FAULT ") + what + f": {done.returncode} "
                  + done.stderr.decode().strip())
            faults += not held
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
