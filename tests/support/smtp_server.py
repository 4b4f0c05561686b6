"""A mail server over TLS on a port, 0 for a free one. Prints the port, then a line of JSON for each message that it takes.

usage: smtp_server.py CERTIFICATE KEY USERNAME PASSWORD PORT
"""
import asyncio
import email
import email.policy
import json
import logging
import ssl
import sys
import warnings

from aiosmtpd.smtp import SMTP, AuthResult

# It warns that passwords travel without STARTTLS, which here is within TLS.
logging.disable()
warnings.simplefilter("ignore")
certificate, key, username, password, port = sys.argv[1:]


class Sink:
    async def handle_RCPT(self, server, session, envelope, address, options):
        if address.startswith("nobody@"):
            return "550 5.1.1 No such user"
        envelope.rcpt_tos.append(address)
        return "250 2.1.5 Ok"

    async def handle_DATA(self, server, session, envelope):
        message = email.message_from_bytes(envelope.content, policy=email.policy.default)
        told = {"sender": envelope.mail_from, "recipients": envelope.rcpt_tos, "from": str(message["From"]),
                "to": str(message["To"]), "subject": str(message["Subject"]), "date": str(message["Date"]),
                "headers": message.keys(), "body": message.get_content(), "content": envelope.content.decode("latin-1")}
        print(json.dumps(told, ensure_ascii=False), flush=True)
        return "250 2.0.0 Ok"


def authenticate(server, session, envelope, mechanism, data):
    right = data.login == username.encode() and data.password == password.encode()
    return AuthResult(success=right, handled=right)


async def serve():
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    loop = asyncio.get_running_loop()
    server = await loop.create_server(
        lambda: SMTP(Sink(), hostname="test.local", authenticator=authenticate, auth_required=True, auth_require_tls=False,
                     data_size_limit=20_000_000),
        "127.0.0.1", int(port), ssl=context)
    print(server.sockets[0].getsockname()[1], flush=True)
    await server.serve_forever()


asyncio.run(serve())
