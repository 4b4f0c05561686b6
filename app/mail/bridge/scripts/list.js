const app = Application('com.apple.mail');
const accounts = PARAMS.ucet ? [najitUcet(app, PARAMS.ucet)] : app.accounts();
const jehla = norm(PARAMS.hledat);
const vysledek = [];

function valueOr(otherwise, read) {
  try {
    return read();
  } catch (refusal) {
    return otherwise;
  }
}

function isFull() {
  return vysledek.length >= PARAMS.limit;
}

for (const acc of accounts) {
  if (isFull()) break;
  let schranka;
  let messages;
  try {
    schranka = najitDorucene(acc);
    messages = PARAMS.jenNeprectene ? schranka.messages.whose({ readStatus: false })() : schranka.messages();
  } catch (refusal) {
    continue;
  }
  for (const z of messages) {
    if (isFull()) break;
    const predmet = valueOr('', function () { return String(z.subject()); });
    const od = valueOr('', function () { return String(z.sender()); });
    if (PARAMS.hledat && !norm(predmet).includes(jehla) && !norm(od).includes(jehla)) continue;
    // What is expensive comes last, so that a search does not read the content of every message.
    vysledek.push({
      id: String(z.id()),
      ucet: String(acc.name()),
      slozka: String(schranka.name()),
      od: od,
      predmet: predmet,
      datum: valueOr('', function () { return String(z.dateReceived()); }),
      precteno: valueOr(true, function () { return z.readStatus(); }),
      ukazka: valueOr('', function () { return String(z.content() || '').slice(0, 300); })
    });
  }
}
return vysledek;
