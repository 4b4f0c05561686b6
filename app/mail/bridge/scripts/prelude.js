// Names compare as if they were typed without diacritics.
function norm(text) {
  return String(text).normalize('NFD').replace(/[\u0300-\u036f]/g, '').toLowerCase().trim();
}

function najitUcet(app, jmeno) {
  const accounts = app.accounts();
  const nalezeny = accounts.find(function (a) {
    return norm(a.name()) === norm(jmeno) || (a.emailAddresses() || []).some(function (address) {
      return norm(address) === norm(jmeno);
    });
  });
  if (nalezeny) return nalezeny;
  const names = accounts.map(function (a) { return String(a.name()); });
  throw new Error('Účet "' + jmeno + '" neznám. Mám tyhle: ' + names.join(', ') + '.');
}

// The Czech name comes first: on a Czech system the mailbox called inbox is often a hidden alias that comes back empty.
function najitDorucene(acc) {
  const mailboxes = acc.mailboxes();
  function named(name) {
    return mailboxes.find(function (m) { return norm(m.name()) === name; });
  }
  const nalezena = named('dorucena posta') || named('inbox');
  if (nalezena) return nalezena;
  const names = mailboxes.map(function (m) { return String(m.name()); });
  throw new Error('Doručenou poštu jsem v účtu ' + acc.name() + ' nenašel. Složky: ' + names.join(', ') + '.');
}

function najitZpravu(app, id, povoleneUcty) {
  const povolene = povoleneUcty.map(norm);
  const accounts = app.accounts().filter(function (a) {
    return povolene.length === 0 || povolene.includes(norm(a.name()));
  });
  for (const acc of accounts) {
    for (const schranka of acc.mailboxes()) {
      try {
        const nalezena = schranka.messages.whose({ id: parseInt(id, 10) })();
        if (nalezena.length > 0) return nalezena[0];
      } catch (refusal) {
        continue;
      }
    }
  }
  return null;
}
