"""What Python's own library takes for what the program does with mail; prints milliseconds by the clock and of the
processor, without the start of Python. Each is done once before it is measured.

usage: mail_baseline.py search PORT AUTHORITY USERNAME PASSWORD
       mail_baseline.py send PORT AUTHORITY USERNAME PASSWORD
       mail_baseline.py decode FILE, a message
"""
import base64
import email
import email.message
import email.policy
import imaplib
import smtplib
import ssl
import sys
import time


def search(port, authority, username, password):
    context = ssl.create_default_context(cafile=authority)
    with imaplib.IMAP4_SSL("localhost", int(port), ssl_context=context) as server:
        # As one literal, since the password has letters that are not ASCII.
        server.authenticate("LOGIN", steps(username, password))
        server.select("INBOX")
        found = server.uid("SEARCH", "UNSEEN")[1][0].split()
        newest = b",".join(reversed(found)).decode()
        _, lines = server.uid("FETCH", newest, "(UID FLAGS BODY.PEEK[HEADER.FIELDS (FROM SUBJECT DATE)])")
        headers = [email.message_from_bytes(part[1], policy=email.policy.default) for part in lines if len(part) == 2]
        assert len([(str(mail["From"]), str(mail["Subject"]), str(mail["Date"])) for mail in headers]) == 50


def steps(username, password):
    answers = iter([username.encode(), password.encode()])
    return lambda challenge: next(answers)


def send(port, authority, username, password):
    context = ssl.create_default_context(cafile=authority)
    with smtplib.SMTP_SSL("localhost", int(port), context=context, local_hostname="morvex.local") as server:
        server.ehlo()
        # By hand, since the library's own login takes ASCII alone.
        server.docmd("AUTH", "LOGIN")
        for answer in (username, password):
            code, reply = server.docmd(base64.b64encode(answer.encode()).decode())
        assert code == 235, reply
        message = email.message.EmailMessage()
        message["From"], message["To"], message["Subject"] = "Jana Nová <jana@b.cz>", "petr@b.cz", "Zkouška"
        message.set_content("Dobrý den,\n" * 100)
        server.send_message(message, "jana@b.cz", ["petr@b.cz"])


def decode(file):
    with open(file, "rb") as message:
        assert len(email.message_from_binary_file(message, policy=email.policy.compat32).get_payload(decode=True)) > 1


work, arguments = {"search": search, "send": send, "decode": decode}[sys.argv[1]], sys.argv[2:]
work(*arguments)
wall, processor = time.perf_counter(), time.process_time()
work(*arguments)
print((time.perf_counter() - wall) * 1e3, (time.process_time() - processor) * 1e3, flush=True)
