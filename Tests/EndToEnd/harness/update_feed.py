import contextlib
import http.server
import json
import hashlib
import ssl
import subprocess
import threading

from .sandbox import tool

HOST = "localhost"


class UpdateFeed:
    """An HTTPS server with a manifest, a package and its signature, each made for one test. What the server has
    to present leads to an authority that nobody else knows."""

    def __init__(self, folder):
        self._folder = folder
        folder.mkdir()
        # What is served, by path: a status, a body and how long that is said to be. Nothing: the answer never
        # comes.
        self.answers = {}
        # The paths that were asked for, in order.
        self.requests = []
        self._make_certificates()
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), self._handler())
        self._server.handle_error = lambda *_: None
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(folder / "server.pem", folder / "server.key")
        self._server.socket = context.wrap_socket(
            self._server.socket, server_side=True, do_handshake_on_connect=False
        )
        self._ended = threading.Event()
        self._thread = threading.Thread(target=self._server.serve_forever, kwargs={"poll_interval": 0.05}, daemon=True)
        self._thread.start()
        self.address = f"https://{HOST}:{self._server.server_address[1]}"

    def close(self):
        self._ended.set()
        self._server.shutdown()
        self._thread.join()
        self._server.server_close()

    @property
    def authorities(self):
        """A folder as the system keeps its authorities, with this one alone."""
        return self._folder / "authorities"

    def offer(self, package, signature, version="1.4.0"):
        """Serves an update to this version."""
        self.answer("/tavro.deb", 200, package)
        self.answer("/tavro.deb.asc", 200, signature)
        entry = {
            "url": f"{self.address}/tavro.deb",
            "sha256": hashlib.sha256(package).hexdigest(),
            "fileName": "tavro.deb",
        }
        manifest = {
            "schemaVersion": 1,
            "version": version,
            "publishedAt": "2025-03-01T09:30:00Z",
            "releaseNotes": [
                "Chords keep their voicing when the octave changes",
                "The status tells which keys another program has reserved, and how to get them back",
                "Fewer faults",
            ],
            "platforms": {"windows": entry, "macos": entry, "linux": entry},
        }
        self.answer("/latest.json", 200, json.dumps(manifest).encode())

    def answer(self, path, status, body):
        self.answers[path] = (status, body, len(body))

    def stall(self, path, length):
        """So many bytes of what is served come, and then nothing."""
        status, body, announced = self.answers[path]
        self.answers[path] = (status, body[:length], announced)

    def _handler(self):
        feed = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                feed.requests.append(self.path)
                answer = feed.answers.get(self.path, (404, b"", 0))
                if answer is None:
                    feed._ended.wait()
                    return
                status, body, announced = answer
                self.send_response(status)
                self.send_header("Content-Length", str(announced))
                self.end_headers()
                with contextlib.suppress(OSError):
                    self.wfile.write(body)
                    self.wfile.flush()
                if len(body) < announced:
                    feed._ended.wait()

            def log_message(self, *arguments):
                pass

        return Handler

    def _openssl(self, *arguments):
        done = subprocess.run(
            [tool("openssl"), *arguments], cwd=self._folder, capture_output=True, text=True, check=False
        )
        if done.returncode != 0:
            raise AssertionError(f"openssl {arguments[0]}: {done.stderr}")
        return done.stdout.strip()

    def _make_certificates(self):
        key = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes"]
        self._openssl("req", "-x509", *key, "-keyout", "authority.key", "-out", "authority.pem", "-days", "2",
                      "-subj", "/CN=Authority of one test")
        self._openssl("req", "-new", *key, "-keyout", "server.key", "-out", "server.csr", "-subj", f"/CN={HOST}")
        (self._folder / "extensions").write_text(f"subjectAltName=DNS:{HOST}", encoding="utf-8")
        self._openssl("x509", "-req", "-in", "server.csr", "-CA", "authority.pem", "-CAkey", "authority.key",
                      "-CAcreateserial", "-extfile", "extensions", "-days", "2", "-out", "server.pem")
        name = self._openssl("x509", "-in", "authority.pem", "-noout", "-hash")
        self.authorities.mkdir()
        certificate = (self._folder / "authority.pem").read_bytes()
        (self.authorities / "authority.pem").write_bytes(certificate)
        (self.authorities / f"{name}.0").write_bytes(certificate)
