# SPDX-License-Identifier: MIT
"""read_message.py MESSAGE FOLDER: what a mail program that knows nothing of ours reads in a message.

Prints headers and parts as "NAME: VALUE" lines and saves each attachment's bytes as FOLDER/NUMBER.
"""
import email
import email.policy
import email.utils
import sys

with open(sys.argv[1], "rb") as file:
    raw = file.read()
message = email.message_from_bytes(raw, policy=email.policy.default)

for name in ("Subject", "To", "From", "Message-ID", "X-Unsent", "MIME-Version"):
    print(f"{name}: {'|'.join(message.get_all(name, []))}")
print("recipients:", "|".join(address.addr_spec for address in message["To"].addresses))
print("sender:", "|".join(address.addr_spec for address in message["From"].addresses))
print("date:", int(email.utils.parsedate_to_datetime(message["Date"]).timestamp()))
print("headers:", "|".join(message.keys()))

attachments = list(message.iter_attachments())
body = message.get_body(("plain",))
print("type:", message.get_content_type())
print("text:", repr(body.get_content()))
print("attachments:", len(attachments))
for number, attachment in enumerate(attachments):
    print(f"attachment {number}: {attachment.get_filename()}|{attachment.get_content_type()}|"
          f"{attachment.get_content_disposition()}")
    with open(f"{sys.argv[2]}/{number}", "wb") as file:
        file.write(attachment.get_payload(decode=True))

defects = [repr(defect) for part in message.walk() for defect in part.defects]
defects += [repr(defect) for part in message.walk() for value in part.values() for defect in value.defects]
print("defects:", "|".join(defects))
lines = raw.split(b"\r\n")
print("longest line:", max(len(line) for line in lines))
print("bare line ends:", sum(line.count(b"\n") + line.count(b"\r") for line in lines))
print("beyond ascii:", sum(byte > 127 for byte in raw))
