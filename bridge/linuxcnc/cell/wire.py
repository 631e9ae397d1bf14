# Copyright 2026 The lumo developers
# This program is free software; you can redistribute it and/or modify it under the terms of the GNU General Public
# License, version 2, as published by the Free Software Foundation. It comes without any warranty.
"""JSON lines over 127.0.0.1: what motion.py and rio.py share."""
import json
import os
import socket

BASE_PORT = int(os.environ.get("LUMO_LINUXCNC_PORT", "5100"))
COMMANDS, SIGNALS, STATE = BASE_PORT, BASE_PORT + 1, BASE_PORT + 2


def listen(port):
    server = socket.socket()
    server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    server.bind(("127.0.0.1", port))
    server.listen(1)
    return server


def accept(server):
    """The next client. A client that vanishes without a word is noticed after three seconds."""
    client, _ = server.accept()
    client.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
    client.setsockopt(socket.SOL_SOCKET, socket.SO_KEEPALIVE, 1)
    for option, value in ((socket.TCP_KEEPIDLE, 1), (socket.TCP_KEEPINTVL, 1), (socket.TCP_KEEPCNT, 2),
                          (socket.TCP_USER_TIMEOUT, 3000)):
        client.setsockopt(socket.IPPROTO_TCP, option, value)
    return client


def send(client, message):
    client.sendall((json.dumps(message, separators=(",", ":")) + "\n").encode())
