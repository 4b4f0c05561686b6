// The scripting interface of a Mail whose state is given:
//
//   { "accounts": [ { "name", "emailAddresses": [], "mailboxes": [ { "name", "messages": [ { "id", "subject", "sender",
//     "content", "dateReceived", "readStatus" } ] } ] } ], "refusal": { "error", "number" }, "lacks": [ "accounts" ] }
//
// Any value may be `{ "error": "words", "number": -1728 }`: reading it fails so. `refusal` is the answer to everything.
// What `lacks` names is not in the dictionary of this Mail. The journal says which contents were read, which messages
// were made, and which of them were sent.
'use strict';

function refusal(error, number) {
  return Object.assign(new Error(error), { number: number });
}

function valueOf(given) {
  if (given && given.error) throw refusal(given.error, given.number);
  return given;
}

// A list of objects: a call gives them, `whose` those that have these values.
function list(elements) {
  function all() {
    return valueOf(elements());
  }
  all.whose = function (wanted) {
    return function () {
      return valueOf(elements()).filter(function (element) {
        return Object.keys(wanted).every(function (key) { return element[key]() === wanted[key]; });
      });
    };
  };
  return all;
}

// A message that is being written. Until Mail has it, its properties cannot be set.
class OutgoingMessage {
  constructor(properties) {
    this.record = Object.assign({ recipients: [], isPushed: false, isSent: false }, properties);
    const record = this.record;
    this.toRecipients = {
      push: function (recipient) {
        if (!record.isPushed) throw refusal("Can't get object.", -1728);
        record.recipients.push(recipient.address);
      }
    };
  }

  set sender(address) {
    if (!this.record.isPushed) throw refusal("Can't set that. Access not possible.", -10003);
    this.record.sender = address;
  }

  send() {
    this.record.isSent = true;
  }
}

class MailModel {
  constructor(state) {
    this.state = state;
    this.journal = { contentsRead: [], outgoing: [] };
  }

  application(id) {
    if (id !== 'com.apple.mail') throw refusal("Application can't be found.", -2700);
    if (this.state.refusal) throw refusal(this.state.refusal.error, this.state.refusal.number);
    const journal = this.journal;
    const app = {
      accounts: list(() => valueOf(this.state.accounts)?.map((account) => this.account(account))),
      OutgoingMessage: function (properties) { return new OutgoingMessage(properties); },
      ToRecipient: function (properties) { return properties; },
      outgoingMessages: {
        push: function (message) {
          message.record.isPushed = true;
          journal.outgoing.push(message.record);
        }
      }
    };
    for (const name of this.state.lacks || []) {
      app[name] = function () { throw refusal('Message not understood.', -1708); };
    }
    return app;
  }

  account(account) {
    return {
      name: () => valueOf(account.name),
      emailAddresses: () => valueOf(account.emailAddresses),
      mailboxes: list(() => valueOf(account.mailboxes).map((mailbox) => this.mailbox(mailbox)))
    };
  }

  mailbox(mailbox) {
    return {
      name: () => valueOf(mailbox.name),
      messages: list(() => valueOf(mailbox.messages).map((message) => this.message(message)))
    };
  }

  message(message) {
    return {
      id: () => valueOf(message.id),
      subject: () => valueOf(message.subject),
      sender: () => valueOf(message.sender),
      dateReceived: () => valueOf(message.dateReceived),
      readStatus: () => valueOf(message.readStatus),
      content: () => {
        this.journal.contentsRead.push(message.id);
        return valueOf(message.content);
      }
    };
  }
}

module.exports = { MailModel };
