"""Runs `zelconv mail` against a small SMTP server on a free loopback port and checks
what arrives with Python's own e-mail parser. Standard library only.

usage: mail_zelconv_check.py ZELCONV WORKDIR
Prints "mail check passed" and exits 0 when the mail arrived as sent.
"""
import email
import os
import random
import socket
import subprocess
import sys
import threading


def serve_one(listener, record):
    conn, _ = listener.accept()
    conn.settimeout(30)
    f = conn.makefile("rb")

    def reply(text):
        conn.sendall(text.encode() + b"\r\n")

    reply("220 sink ready")
    while True:
        line = f.readline()
        if not line:
            break
        record["commands"].append(line.decode())
        verb = line[:4].upper()
        if verb == b"DATA":
            reply("354 end with <CRLF>.<CRLF>")
            data = []
            while True:
                chunk = f.readline()
                if not chunk or chunk == b".\r\n":
                    break
                data.append(chunk[1:] if chunk.startswith(b"..") else chunk)
            record["data"] = b"".join(data)
            reply("250 stored")
        elif verb == b"QUIT":
            reply("221 bye")
            break
        else:
            reply("250 ok")
    conn.close()


def main(zelconv, workdir):
    os.makedirs(workdir, exist_ok=True)
    body = os.path.join(workdir, "body.txt")
    with open(body, "w") as f:
        f.write("Closure of traverse 7: 4 mm.\n.\nEnd.\n")
    attachment = os.path.join(workdir, "traverse.bin")
    payload = bytes(random.Random(7).getrandbits(8) for _ in range(5000))
    with open(attachment, "wb") as f:
        f.write(payload)

    listener = socket.socket()
    listener.bind(("127.0.0.1", 0))
    listener.listen(1)
    port = listener.getsockname()[1]
    record = {"commands": [], "data": None}
    server = threading.Thread(target=serve_one, args=(listener, record), daemon=True)
    server.start()

    run = subprocess.run([zelconv, "mail", "--server", "127.0.0.1", "--port", str(port),
                          "--from", "Field Office <field@site.test>", "--to", "ann@site.test,Bob <bob@site.test>",
                          "--cc", "cy@site.test", "--bcc", "audit@site.test", "--subject", "Traverse 7",
                          "--body", body, "--attach", attachment],
                         capture_output=True, text=True, timeout=60)
    server.join(30)
    problems = []
    if run.returncode != 0:
        problems.append("zelconv exited %d: %s" % (run.returncode, run.stderr))
    if "sent to 4 recipient(s)" not in run.stdout:
        problems.append("unexpected output: " + run.stdout)
    rcpts = [c for c in record["commands"] if c.startswith("RCPT TO:")]
    if rcpts != ["RCPT TO: <ann@site.test>\r\n", "RCPT TO: <bob@site.test>\r\n",
                 "RCPT TO: <cy@site.test>\r\n", "RCPT TO: <audit@site.test>\r\n"]:
        problems.append("envelope: %r" % rcpts)
    if record["data"] is None:
        problems.append("no message arrived")
    else:
        msg = email.message_from_bytes(record["data"])
        if msg["Subject"] != "Traverse 7" or "audit" in str(msg.items()):
            problems.append("headers: %r" % msg.items())
        parts = [p for p in msg.walk() if not p.is_multipart()]
        if len(parts) != 2:
            problems.append("%d parts" % len(parts))
        else:
            if parts[0].get_payload(decode=True) != b"Closure of traverse 7: 4 mm.\r\n.\r\nEnd.\r\n":
                problems.append("text: %r" % parts[0].get_payload(decode=True))
            if parts[1].get_filename() != "traverse.bin" or parts[1].get_payload(decode=True) != payload:
                problems.append("attachment differs")
    if problems:
        print("\n".join(problems))
        return 1
    print("mail check passed")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2]))
