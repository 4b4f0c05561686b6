const app = Application('com.apple.mail');
const accounts = app.accounts();
if (!accounts || accounts.length === 0) return [];
return accounts.map(function (a) { return String(a.name()); });
