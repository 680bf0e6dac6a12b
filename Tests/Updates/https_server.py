#!/usr/bin/env python3
"""https_server.py CERTIFICATE KEY: an HTTPS server on a free port of the loopback device, which it prints.

It answers by the path of the request, and ends with its standard input. Some answers are broken on purpose.
"""

import http.server
import socket
import ssl
import sys
import threading

BODY = bytes(range(256)) * 1024


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):
        action = self.path.strip("/").split("/")
        getattr(self, "answer_" + action[0])(*action[1:])

    def head(self, status, length=None, **headers):
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), value)
        if length is not None:
            self.send_header("Content-Length", str(length))
        else:
            self.send_header("Connection", "close")
            self.close_connection = True
        self.end_headers()

    def answer_body(self, size):
        self.head(200, int(size))
        self.wfile.write(BODY[: int(size)])

    def answer_unannounced(self, size):
        self.head(200)
        self.wfile.write(BODY[: int(size)])

    def answer_status(self, status):
        body = b"" if status in ("204", "304") else b"<html>an error page</html>"
        self.head(int(status), len(body))
        self.wfile.write(body)

    def answer_encoding(self):
        body = self.headers.get("Accept-Encoding", "").encode()
        self.head(200, len(body))
        self.wfile.write(body)

    def answer_redirect(self, *target):
        """/redirect/body/10, /redirect/http/PORT, /redirect/ftp, /redirect/file, /redirect/loop, /redirect/nowhere"""
        if target[0] == "nowhere":
            self.head(302, 0)
        elif target[0] == "loop":
            self.head(302, 0, Location="/redirect/loop")
        elif target[0] in ("ftp", "file"):
            self.head(302, 0, Location=f"{target[0]}://localhost/etc/passwd")
        elif target[0] == "http":
            self.head(302, 0, Location=f"http://localhost:{target[1]}/body/10")
        else:
            self.head(302, 0, Location="/" + "/".join(target))

    def answer_truncated(self, announced, sent):
        self.head(200, int(announced))
        self.wfile.write(BODY[: int(sent)])
        self.wfile.flush()
        self.connection.shutdown(socket.SHUT_RDWR)
        self.close_connection = True

    def answer_overlong(self, announced, sent):
        self.head(200, int(announced))
        self.wfile.write(BODY[: int(sent)])
        self.close_connection = True

    def answer_chunks(self, *sizes):
        """An empty last size is the proper end; without it the end is missing."""
        self.head(200, Transfer_Encoding="chunked")
        for size in sizes:
            data = BODY[: int(size)]
            self.wfile.write(b"%x\r\n" % len(data) + data + b"\r\n")
        self.wfile.flush()
        self.connection.shutdown(socket.SHUT_RDWR)

    def answer_stalled(self, announced, sent):
        """Sends a part and then nothing, until the other side has enough of it."""
        self.head(200, int(announced))
        self.wfile.write(BODY[: int(sent)])
        self.wfile.flush()
        self.wait_for_the_other_side()

    def answer_silent(self):
        self.wait_for_the_other_side()

    def wait_for_the_other_side(self):
        self.close_connection = True
        try:
            self.connection.recv(1)
        except OSError:
            pass

    def log_message(self, *arguments):
        pass


class Server(http.server.ThreadingHTTPServer):
    def handle_error(self, request, client_address):
        # A client that does not trust the certificate, or that has enough, closes the connection.
        pass


def main():
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[1], sys.argv[2])
    server = Server(("127.0.0.1", 0), Handler)
    server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    print(server.server_address[1], flush=True)
    sys.stdin.read()


main()
