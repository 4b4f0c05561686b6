outgoingMessage(Application('com.apple.mail'), true);
return 'Koncept je otevřený v Mailu.';
