const app = Application('com.apple.mail');
const zprava = najitZpravu(app, PARAMS.id, PARAMS.ucty);
if (zprava === null) throw new Error('Zprávu s tímhle číslem jsem nenašel.');
return String(zprava.content());
