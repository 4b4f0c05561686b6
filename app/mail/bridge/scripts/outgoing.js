function outgoingMessage(app, visible) {
  let odesilatel = null;
  if (PARAMS.ucet) {
    const acc = najitUcet(app, PARAMS.ucet);
    const adresy = acc.emailAddresses();
    if (!adresy || adresy.length === 0) throw new Error('Účet nemá nastavenou adresu.');
    odesilatel = adresy[0];
  }
  const zprava = app.OutgoingMessage({ subject: PARAMS.predmet, content: PARAMS.telo, visible: visible });
  // Mail refuses every change of the message before this.
  app.outgoingMessages.push(zprava);
  if (odesilatel) zprava.sender = odesilatel;
  zprava.toRecipients.push(app.ToRecipient({ address: PARAMS.komu }));
  return zprava;
}
