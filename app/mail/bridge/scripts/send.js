const zprava = outgoingMessage(Application('com.apple.mail'), false);
zprava.send();
return 'Odesláno.';
