"""A real SMTP server (aiosmtpd) on a free loopback port for one session.

Prints the port on the first line of standard output, accepts one connection, and
when the client has gone writes what it received into OUTDIR, as Python's own
e-mail parser reads it:
  envelope.txt     MAIL FROM and every RCPT TO, one a line
  headers.txt      "Name: value" of the top-level headers (folded lines joined)
  parts.txt        per part: content type|file name|transfer encoding|defects
  text.txt         the decoded payload of the first text/plain part
  att_<filename>   the decoded bytes of each attachment
Exits 0 when a message was stored, 1 otherwise.
"""
import asyncio
import email
import os
import sys

from aiosmtpd.smtp import SMTP


def store(outdir, envelope):
    msg = email.message_from_bytes(envelope.original_content or envelope.content)
    with open(os.path.join(outdir, "envelope.txt"), "w") as f:
        f.write(envelope.mail_from + "\n")
        for rcpt in envelope.rcpt_tos:
            f.write(rcpt + "\n")
    with open(os.path.join(outdir, "headers.txt"), "w") as f:
        for name, value in msg.items():
            f.write("%s: %s\n" % (name, " ".join(value.split())))
    parts = msg.walk() if msg.is_multipart() else [msg]
    with open(os.path.join(outdir, "parts.txt"), "w") as f:
        for part in parts:
            if part.is_multipart():
                continue
            payload = part.get_payload(decode=True)
            name = part.get_filename()
            f.write("%s|%s|%s|%s\n" % (part.get_content_type(), name, part.get("Content-Transfer-Encoding"),
                                        ",".join(type(d).__name__ for d in part.defects)))
            if name:
                with open(os.path.join(outdir, "att_" + name), "wb") as a:
                    a.write(payload)
            elif part.get_content_type() == "text/plain":
                with open(os.path.join(outdir, "text.txt"), "wb") as t:
                    t.write(payload)


class Handler:
    def __init__(self, outdir):
        self.outdir = outdir
        self.stored = False

    async def handle_DATA(self, server, session, envelope):
        store(self.outdir, envelope)
        self.stored = True
        return "250 Message accepted"


async def main(outdir):
    handler = Handler(outdir)
    gone = asyncio.Event()

    class OneSession(SMTP):
        def connection_lost(self, exc):
            super().connection_lost(exc)
            gone.set()

    loop = asyncio.get_running_loop()
    server = await loop.create_server(lambda: OneSession(handler, hostname="sink.test"), "127.0.0.1", 0)
    print(server.sockets[0].getsockname()[1], flush=True)
    try:
        await asyncio.wait_for(gone.wait(), 120)
    except asyncio.TimeoutError:
        pass
    server.close()
    return 0 if handler.stored else 1


if __name__ == "__main__":
    sys.exit(asyncio.run(main(sys.argv[1])))
