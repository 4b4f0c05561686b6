<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="cs">
<context>
    <name>Morvex</name>
    <message numerus="yes">
        <source>{pocet} povolených složek</source>
        <translation>
            <numerusform>{pocet} allowed folder</numerusform>
            <numerusform>{pocet} allowed folders</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} připojeno</source>
        <translation>
            <numerusform>{pocet} connected</numerusform>
            <numerusform>{pocet} connected</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} nástrojů</source>
        <translation>
            <numerusform>{pocet} tool</numerusform>
            <numerusform>{pocet} tools</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} synchronizováno</source>
        <translation>
            <numerusform>{pocet} synced</numerusform>
            <numerusform>{pocet} synced</numerusform>
        </translation>
    </message>
    <message>
        <source>{nastroj} skončil chybou: {zprava}</source>
        <translation>{nastroj} ended with an error: {zprava}</translation>
    </message>
    <message>
        <source>Adresa</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>Adresa relaye nedává smysl.</source>
        <translation>The relay address is not valid.</translation>
    </message>
    <message>
        <source>Adresa relaye začíná https:// nebo http://. Napiš „{adresa}“.</source>
        <translation>The address of a relay begins with https:// or http://. Write “{adresa}”.</translation>
    </message>
    <message>
        <source>Adresa serveru není platná.</source>
        <translation>The address of the server is not valid.</translation>
    </message>
    <message>
        <source>Adresa vlastní aplikace musí být platné HTTPS.</source>
        <translation>The address of the custom app must be valid HTTPS.</translation>
    </message>
    <message>
        <source>Apple Mail existuje jen v systému macOS.</source>
        <translation>Apple Mail exists on macOS only.</translation>
    </message>
    <message>
        <source>Apple Mail neposkytl podporované automatizační rozhraní.</source>
        <translation>Apple Mail did not offer a supported scripting interface.</translation>
    </message>
    <message>
        <source>Binárka nalezena, ale `--version` neodpovědělo. Zkontroluj instalaci.</source>
        <translation>The program was found, but `--version` did not answer. Check the installation.</translation>
    </message>
    <message>
        <source>Binárku „{binarka}“ jsem nenašel (prohledáno {pocet} adresářů). {napoveda}</source>
        <translation>The program “{binarka}” was not found ({pocet} folders searched). {napoveda}</translation>
    </message>
    <message>
        <source>Byl požadován nástroj {nastroj}, který tento Mac neumí.</source>
        <translation>The tool {nastroj} was asked for, which this Mac does not have.</translation>
    </message>
    <message>
        <source>Běží: %1</source>
        <translation>Running: %1</translation>
    </message>
    <message>
        <source>Certifikát serveru je vydaný pro jinou adresu. Zkontroluj adresu serveru.</source>
        <translation>The server’s certificate was issued for another address. Check the address of the server.</translation>
    </message>
    <message>
        <source>Certifikát serveru ještě neplatí. Zkontroluj hodiny počítače.</source>
        <translation>The server’s certificate is not valid yet. Check the clock of the computer.</translation>
    </message>
    <message>
        <source>Certifikát serveru není v pořádku.</source>
        <translation>The server’s certificate is not in order.</translation>
    </message>
    <message>
        <source>Certifikát serveru nevydala autorita, které tento počítač věří. Certifikát vlastní autority ulož s příponou .crt do /usr/local/share/ca-certificates a spusť sudo update-ca-certificates.</source>
        <translation>The server’s certificate was not issued by an authority that this computer trusts. Save the certificate of your own authority with the ending .crt in /usr/local/share/ca-certificates and run sudo update-ca-certificates.</translation>
    </message>
    <message>
        <source>Cesta {cesta} leží mimo povolené složky. Nesahám na ni.</source>
        <translation>The path {cesta} is outside of the allowed folders. I do not touch it.</translation>
    </message>
    <message>
        <source>Cesta vede mimo svou složku nebo na jiný disk.</source>
        <translation>The path leads out of its folder or to another disk.</translation>
    </message>
    <message>
        <source>Cesta vede přes odkaz, který nejde sledovat.</source>
        <translation>The path leads through a link that cannot be followed.</translation>
    </message>
    <message>
        <source>Chybí k tomu oprávnění.</source>
        <translation>The permission for it is missing.</translation>
    </message>
    <message>
        <source>Chybí název nebo platný čas události.</source>
        <translation>The name or a valid time of the event is missing.</translation>
    </message>
    <message>
        <source>Claude Code je nainstalovaný, ale přihlášení není platné nebo kontrola neodpověděla. V Terminálu spusť `claude auth login` a potom zde klikni na Zjistit znovu.</source>
        <translation>Claude Code is installed, but its login is not valid or the check did not answer. Run `claude auth login` in a terminal, then click Check again here.</translation>
    </message>
    <message>
        <source>Claude Code skončil chybou.</source>
        <translation>Claude Code ended with an error.</translation>
    </message>
    <message>
        <source>Codex skončil chybou.</source>
        <translation>Codex ended with an error.</translation>
    </message>
    <message>
        <source>Další pokus za {vterin} s</source>
        <translation>Next attempt in {vterin} s</translation>
    </message>
    <message>
        <source>Disk je jen pro čtení.</source>
        <translation>The disk is read-only.</translation>
    </message>
    <message>
        <source>Disk nebo jiné zařízení selhalo.</source>
        <translation>The disk or another device has failed.</translation>
    </message>
    <message>
        <source>Doplň název vlastní aplikace.</source>
        <translation>Give the custom app a name.</translation>
    </message>
    <message>
        <source>Dostupnost</source>
        <translation>Availability</translation>
    </message>
    <message>
        <source>Historii úkolů se nepodařilo načíst: {duvod}</source>
        <translation>The history of tasks could not be read: {duvod}</translation>
    </message>
    <message>
        <source>Historii úkolů se nepodařilo uložit: {duvod}</source>
        <translation>The history of tasks could not be saved: {duvod}</translation>
    </message>
    <message>
        <source>Hlas na Macu</source>
        <translation>Voice on the Mac</translation>
    </message>
    <message>
        <source>Hlasový rozhovor tahle verze ještě neumí.</source>
        <translation>Voice conversations are not available in this version yet.</translation>
    </message>
    <message>
        <source>Hlavička požadavku je příliš dlouhá.</source>
        <translation>The request's header is too long.</translation>
    </message>
    <message>
        <source>Hlavička požadavku má neplatné znaky.</source>
        <translation>The request's header has invalid characters.</translation>
    </message>
    <message>
        <source>Hledání místa selhalo.</source>
        <translation>The search for the place failed.</translation>
    </message>
    <message>
        <source>Hotovo</source>
        <translation>Done</translation>
    </message>
    <message>
        <source>Identita zprávy nebo požadavku obsahuje svislou čáru.</source>
        <translation>The identity of the message or of the request contains a vertical bar.</translation>
    </message>
    <message>
        <source>Identifikátor</source>
        <translation>Identifier</translation>
    </message>
    <message>
        <source>Integrace</source>
        <translation>Integrations</translation>
    </message>
    <message>
        <source>Invalid number of keys found, expected one.</source>
        <translation>The message should have exactly one case.</translation>
    </message>
    <message>
        <source>Jazyk aplikace a asistentky</source>
        <translation>Language of the app and the assistant</translation>
    </message>
    <message>
        <source>Jednorázové číslo zprávy má špatnou délku.</source>
        <translation>The message's nonce has a wrong length.</translation>
    </message>
    <message>
        <source>Jméno nebo cesta je příliš dlouhá.</source>
        <translation>The name or path is too long.</translation>
    </message>
    <message>
        <source>Jméno serveru síť nezná. Zkontroluj adresu a připojení k síti.</source>
        <translation>The network does not know the name of the server. Check the address and the network connection.</translation>
    </message>
    <message>
        <source>Jméno už je obsazené.</source>
        <translation>The name is already taken.</translation>
    </message>
    <message>
        <source>K serveru nevede cesta. Zkontroluj připojení k síti.</source>
        <translation>There is no way to the server. Check the network connection.</translation>
    </message>
    <message>
        <source>Kalendář</source>
        <translation>Calendar</translation>
    </message>
    <message>
        <source>Kalendář je povolený pouze pro zápis</source>
        <translation>The calendar is allowed for writing only</translation>
    </message>
    <message>
        <source>Kalendář je připojený</source>
        <translation>The calendar is connected</translation>
    </message>
    <message>
        <source>Kalendář čeká na povolení</source>
        <translation>The calendar is waiting for permission</translation>
    </message>
    <message>
        <source>Když se čísla liší, nepotvrzuj. Znamená to, že mezi telefonem a Macem někdo je.</source>
        <translation>If the numbers differ, do not confirm. It means that somebody stands between the phone and the Mac.</translation>
    </message>
    <message>
        <source>Keychain error {stav}</source>
        <translation>Keychain error {stav}</translation>
    </message>
    <message>
        <source>Kliknutím zkopíruješ text kódu.</source>
        <translation>A click copies the text of the code.</translation>
    </message>
    <message>
        <source>Klávesová zkratka pro hlas</source>
        <translation>Keyboard shortcut for the voice</translation>
    </message>
    <message>
        <source>Klíč má mít {ocekavano} bajtů, má jich {dostal}.</source>
        <translation>The key should have {ocekavano} bytes, it has {dostal}.</translation>
    </message>
    <message>
        <source>Klíč pro spojení nejde odvodit: {duvod}</source>
        <translation>The key for the connection cannot be derived: {duvod}</translation>
    </message>
    <message>
        <source>Klíč telefonu nejde použít: {duvod}</source>
        <translation>The phone's key cannot be used: {duvod}</translation>
    </message>
    <message>
        <source>Klíče leží v souborech, které smí číst jen tvůj účet, protože tu není klíčenka.</source>
        <translation>The keys lie in files that only your account may read, since there is no keyring here.</translation>
    </message>
    <message>
        <source>Klíčenka zůstala zamčená.</source>
        <translation>The keyring stayed locked.</translation>
    </message>
    <message>
        <source>Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí.</source>
        <translation>The keyring stayed locked. It holds the keys of this computer; without them the phone cannot connect.</translation>
    </message>
    <message>
        <source>Kontakty</source>
        <translation>Contacts</translation>
    </message>
    <message>
        <source>Kontakty jsou připojené</source>
        <translation>Contacts are connected</translation>
    </message>
    <message>
        <source>Kontakty čekají na povolení</source>
        <translation>Contacts are waiting for permission</translation>
    </message>
    <message>
        <source>Kopírovat</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>Kryptografická knihovna selhala.</source>
        <translation>The cryptographic library failed.</translation>
    </message>
    <message>
        <source>Kód platí do %1. Po vypršení si nech zobrazit nový — krátká platnost je záměr.</source>
        <translation>The code is valid until %1. After that, show a new one — codes are short-lived on purpose.</translation>
    </message>
    <message>
        <source>Mac není dostupný.</source>
        <translation>The Mac is not available.</translation>
    </message>
    <message>
        <source>Mac právě pracuje: {cim}.</source>
        <translation>The Mac is busy: {cim}.</translation>
    </message>
    <message>
        <source>Mac spí</source>
        <translation>The Mac is asleep</translation>
    </message>
    <message>
        <source>Mail neodpověděl včas. Zkus menší počet zpráv.</source>
        <translation>Mail did not answer in time. Try fewer messages.</translation>
    </message>
    <message>
        <source>Mail operaci odmítl.</source>
        <translation>Mail refused the operation.</translation>
    </message>
    <message>
        <source>Mail vrátil něco, čemu nerozumím.</source>
        <translation>Mail returned something that I do not understand.</translation>
    </message>
    <message>
        <source>Mluvit bez držení</source>
        <translation>Talk hands-free</translation>
    </message>
    <message>
        <source>Morvex běží bez systémového sandboxu, protože pouští tvoje vlastní programy a pracuje v tvých složkách. Přístup k souborům hlídá seznam povolených složek.</source>
        <translation>Morvex runs without the system's sandbox, since it runs programs of your own and works in your folders. Access to files is guarded by the list of allowed folders.</translation>
    </message>
    <message>
        <source>Morvex nemá plný přístup ke kalendářům na tomto Macu. Povol ho v okně Morvex nebo v Nastavení systému → Soukromí a zabezpečení → Kalendáře.</source>
        <translation>Morvex does not have full access to the calendars on this Mac. Allow it in the Morvex window or in System Settings → Privacy &amp; Security → Calendars.</translation>
    </message>
    <message>
        <source>Morvex nemá přístup k připomínkám tohoto Macu.</source>
        <translation>Morvex has no access to the reminders of this Mac.</translation>
    </message>
    <message>
        <source>Morvex nemá přístup ke kontaktům tohoto Macu.</source>
        <translation>Morvex has no access to the contacts of this Mac.</translation>
    </message>
    <message>
        <source>Místo pro polohovou připomínku se nepodařilo najít.</source>
        <translation>The place for the location reminder could not be found.</translation>
    </message>
    <message>
        <source>Na Macu není dostupný seznam připomínek pro zápis.</source>
        <translation>No list of reminders that can be written to is available on the Mac.</translation>
    </message>
    <message>
        <source>Na Macu není kalendář, do kterého lze zapisovat.</source>
        <translation>There is no calendar on the Mac that can be written to.</translation>
    </message>
    <message>
        <source>Na baterii Mac usne bez ohledu na tohle nastavení. Bránit spánku bez napájení by ti vybilo notebook v tašce.</source>
        <translation>On battery the Mac goes to sleep whatever this setting says. Holding off sleep without power would drain the laptop in your bag.</translation>
    </message>
    <message>
        <source>Na baterii usne — držení vzhůru platí jen při napájení</source>
        <translation>Goes to sleep on battery — it is kept awake on mains power only</translation>
    </message>
    <message>
        <source>Poštovní účet „{nazev}“ není v Morvex povolený.</source>
        <translation>The mail account “{nazev}” is not allowed in Morvex.</translation>
    </message>
    <message>
        <source>Připomínku jsem nenašel.</source>
        <translation>I did not find the reminder.</translation>
    </message>
    <message>
        <source>Připomínky jsou povolené pouze pro zápis</source>
        <translation>Reminders are allowed for writing only</translation>
    </message>
    <message>
        <source>Připomínky jsou připojené</source>
        <translation>Reminders are connected</translation>
    </message>
    <message>
        <source>Připomínky čekají na povolení</source>
        <translation>Reminders are waiting for permission</translation>
    </message>
    <message>
        <source>Přístup k připomínkám byl zamítnut</source>
        <translation>Access to reminders was denied</translation>
    </message>
    <message>
        <source>Přístup k připomínkám je systémem omezený</source>
        <translation>Access to reminders is restricted by the system</translation>
    </message>
    <message>
        <source>Přístup ke kalendáři byl zamítnut</source>
        <translation>Access to the calendar was denied</translation>
    </message>
    <message>
        <source>Přístup ke kalendáři je systémem omezený</source>
        <translation>Access to the calendar is restricted by the system</translation>
    </message>
    <message>
        <source>Přístup ke kontaktům byl zamítnut</source>
        <translation>Access to contacts was denied</translation>
    </message>
    <message>
        <source>Přístup ke kontaktům je systémem omezený</source>
        <translation>Access to contacts is restricted by the system</translation>
    </message>
    <message>
        <source>Soubor s ním při startu nešel přečíst. Ukonči Morvex a spusť ho znovu.</source>
        <translation>The file could not be read at the start. Quit Morvex and start it again.</translation>
    </message>
    <message>
        <source>Stav kalendáře není známý</source>
        <translation>The state of the calendar is not known</translation>
    </message>
    <message>
        <source>Stav kontaktů není známý</source>
        <translation>The state of contacts is not known</translation>
    </message>
    <message>
        <source>Stav připomínek není známý</source>
        <translation>The state of reminders is not known</translation>
    </message>
    <message>
        <source>Systémová služba neodpověděla včas.</source>
        <translation>The system service did not answer in time.</translation>
    </message>
    <message>
        <source>Tento kalendář není v Morvex povolený.</source>
        <translation>This calendar is not allowed in Morvex.</translation>
    </message>
    <message>
        <source>Tento počítač nemá službu kalendářů, připomínek a kontaktů.</source>
        <translation>This computer has no service for calendars, reminders and contacts.</translation>
    </message>
    <message>
        <source>Událost už v kalendáři nemohu najít.</source>
        <translation>I can no longer find the event in the calendar.</translation>
    </message>
    <message>
        <source>Vybraný kalendář je pouze pro čtení.</source>
        <translation>The chosen calendar is read-only.</translation>
    </message>
    <message>
        <source>Zrušené párování se nepodařilo smazat: {duvod}</source>
        <translation>The pairing that was cancelled could not be deleted: {duvod}</translation>
    </message>
    <message>
        <source>Odpojení telefonu se nepodařilo uložit: {duvod}</source>
        <translation>The unpairing of the phone could not be saved: {duvod}</translation>
    </message>
    <message>
        <source>Na disku není místo.</source>
        <translation>There is no space left on the disk.</translation>
    </message>
    <message>
        <source>Na tomto počítači taková služba neběží.</source>
        <translation>No such service runs on this computer.</translation>
    </message>
    <message>
        <source>Na této cestě je složka.</source>
        <translation>There is a folder at this path.</translation>
    </message>
    <message>
        <source>Nahrát vlastní zkratku</source>
        <translation>Record a shortcut</translation>
    </message>
    <message>
        <source>Nainstalováno</source>
        <translation>Installed</translation>
    </message>
    <message>
        <source>Nainstaluj: npm i -g @openai/codex (nebo brew install codex). Codex ve webovém ChatGPT ani rozšíření do editoru žádné CLI neinstalují.</source>
        <translation>Install it: npm i -g @openai/codex (or brew install codex). Neither Codex in the ChatGPT website nor the editor extensions install a CLI.</translation>
    </message>
    <message>
        <source>Nastavení se mezitím změnilo.</source>
        <translation>The settings were changed meanwhile.</translation>
    </message>
    <message>
        <source>Nastavení se nepodařilo uložit: {duvod}</source>
        <translation>The settings could not be saved: {duvod}</translation>
    </message>
    <message>
        <source>Načti tento kód v aplikaci Morvex na telefonu.</source>
        <translation>Scan this code in the Morvex app on the phone.</translation>
    </message>
    <message>
        <source>Nejde to přečíst jako base64.</source>
        <translation>It cannot be read as base64.</translation>
    </message>
    <message>
        <source>Nenainstalováno</source>
        <translation>Not installed</translation>
    </message>
    <message>
        <source>Nepodařilo se spustit: {duvod}</source>
        <translation>Could not be started: {duvod}</translation>
    </message>
    <message>
        <source>Neshoduje se</source>
        <translation>They don't match</translation>
    </message>
    <message>
        <source>Nespárováno</source>
        <translation>Not paired</translation>
    </message>
    <message>
        <source>Neznámý druh rámce.</source>
        <translation>Unknown kind of frame.</translation>
    </message>
    <message>
        <source>Neznámý nástroj.</source>
        <translation>Unknown tool.</translation>
    </message>
    <message>
        <source>Nečekaná odpověď na přihlášení.</source>
        <translation>Unexpected answer to the login.</translation>
    </message>
    <message>
        <source>Nový token — ponech prázdné beze změny</source>
        <translation>New token — leave empty to keep the present one</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není na Macu k dispozici: {duvod}</source>
        <translation>The tool {nastroj} is not available on the Mac: {duvod}</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není nainstalovaný.</source>
        <translation>The tool {nastroj} is not installed.</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není povolený: {duvod}</source>
        <translation>The tool {nastroj} is not allowed: {duvod}</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} neznám.</source>
        <translation>The tool {nastroj} is unknown.</translation>
    </message>
    <message>
        <source>Nástroj nevrátil žádný text.</source>
        <translation>The tool returned no text.</translation>
    </message>
    <message>
        <source>Nástroje Macu</source>
        <translation>Tools of the Mac</translation>
    </message>
    <message>
        <source>Název</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>O aplikaci</source>
        <translation>About</translation>
    </message>
    <message>
        <source>Obnovit stav</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>Obálka je od jiného zařízení.</source>
        <translation>The envelope is from another device.</translation>
    </message>
    <message>
        <source>Obálka není pro mě.</source>
        <translation>The envelope is not for me.</translation>
    </message>
    <message>
        <source>Obálka patří jinému páru.</source>
        <translation>The envelope belongs to another pair.</translation>
    </message>
    <message>
        <source>Odebere se i její token. Asistentka pak její nástroje nebude mít.</source>
        <translation>Its token is removed too. The assistant will not have its tools any more.</translation>
    </message>
    <message>
        <source>Odebrat</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>Odebrat aplikaci „%1“?</source>
        <translation>Remove the app “%1”?</translation>
    </message>
    <message>
        <source>Odpojit</source>
        <translation>Unpair</translation>
    </message>
    <message>
        <source>Odpojit telefon</source>
        <translation>Unpair the phone</translation>
    </message>
    <message>
        <source>Odpojit telefon?</source>
        <translation>Unpair the phone?</translation>
    </message>
    <message>
        <source>Odpověď serveru je příliš dlouhá.</source>
        <translation>The answer of the server is too long.</translation>
    </message>
    <message>
        <source>OpenAI klíč bezpečně převzat z iPhonu</source>
        <translation>OpenAI key safely taken over from the iPhone</translation>
    </message>
    <message>
        <source>Operace překročila limit {vterin} vteřin a byla zastavena.</source>
        <translation>The operation exceeded the limit of {vterin} seconds and was stopped.</translation>
    </message>
    <message>
        <source>Operace skončila dřív, než dala výsledek.</source>
        <translation>The operation ended before it gave a result.</translation>
    </message>
    <message>
        <source>Oprávnění ke složce {slozka} se nepodařilo uložit: {duvod}</source>
        <translation>The permission for the folder {slozka} could not be saved: {duvod}</translation>
    </message>
    <message>
        <source>Osobní data</source>
        <translation>Personal data</translation>
    </message>
    <message>
        <source>Otevřít nastavení</source>
        <translation>Open Settings</translation>
    </message>
    <message>
        <source>Otisk klíče nesedí.</source>
        <translation>The fingerprint of the key does not fit.</translation>
    </message>
    <message>
        <source>Ověřovací značka zprávy má špatnou délku.</source>
        <translation>The message's authentication tag has a wrong length.</translation>
    </message>
    <message>
        <source>Platnost certifikátu serveru skončila. Zkontroluj hodiny počítače, nebo na serveru certifikát obnov.</source>
        <translation>The server’s certificate has expired. Check the clock of the computer, or renew the certificate at the server.</translation>
    </message>
    <message>
        <source>Po chvíli nečinnosti usne a přestane být dostupný</source>
        <translation>Goes to sleep after a while of idleness and cannot be reached then</translation>
    </message>
    <message>
        <source>Podle iPhonu</source>
        <translation>As on the iPhone</translation>
    </message>
    <message>
        <source>Podpis zprávy nesedí. Spojení jsem zahodil.</source>
        <translation>The signature of the message does not fit. I have dropped the connection.</translation>
    </message>
    <message>
        <source>Pokračovat v Claude</source>
        <translation>Continue in Claude</translation>
    </message>
    <message>
        <source>Pokračovat v Codexu</source>
        <translation>Continue in Codex</translation>
    </message>
    <message>
        <source>Pole „{pole}“ chybí.</source>
        <translation>The field “{pole}” is missing.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má neznámou hodnotu „{hodnota}“.</source>
        <translation>The field “{pole}” has the unknown value “{hodnota}”.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má neznámý druh „{druh}“.</source>
        <translation>The field “{pole}” is of the unknown kind “{druh}”.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má nečitelnou hodnotu „{hodnota}“.</source>
        <translation>The value “{hodnota}” of the field “{pole}” cannot be read.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má číslo mimo rozsah.</source>
        <translation>The number in the field “{pole}” is out of range.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má špatný typ ({typ}).</source>
        <translation>The field “{pole}” has a wrong type ({typ}).</translation>
    </message>
    <message>
        <source>Poslední změnu z telefonu se nepodařilo uložit: {duvod}</source>
        <translation>The last change from the phone could not be saved: {duvod}</translation>
    </message>
    <message>
        <source>Poslední úkoly</source>
        <translation>Recent tasks</translation>
    </message>
    <message>
        <source>Potvrdit</source>
        <translation>Approve</translation>
    </message>
    <message>
        <source>Potvrdit můžeš tady i hlasem na telefonu. Bez potvrzení se neprovede nic — ani po vypršení.</source>
        <translation>You can approve here or by voice on the phone. Without approval nothing is done — not after expiry either.</translation>
    </message>
    <message>
        <source>Potvrzeno %1</source>
        <translation>Confirmed %1</translation>
    </message>
    <message>
        <source>Povolené složky</source>
        <translation>Allowed folders</translation>
    </message>
    <message>
        <source>Povolit</source>
        <translation>Allow</translation>
    </message>
    <message>
        <source>Povolit akci na Macu</source>
        <translation>Allow an action on the Mac</translation>
    </message>
    <message>
        <source>Povolit složku %1?</source>
        <translation>Allow the folder %1?</translation>
    </message>
    <message>
        <source>Poznámka „{nazev}“ je na přenos příliš dlouhá, telefon ji nedostane.</source>
        <translation>The note “{nazev}” is too long to be sent; the phone will not get it.</translation>
    </message>
    <message>
        <source>Poznámky Morvex</source>
        <translation>Morvex notes</translation>
    </message>
    <message>
        <source>Poznámky vytvořené na iPhonu se po zabezpečeném spojení objeví tady a zůstanou dostupné i offline.</source>
        <translation>Notes made on the iPhone appear here once the connection is secured, and stay available offline.</translation>
    </message>
    <message>
        <source>Počítač se nepodařilo udržet vzhůru: {duvod}</source>
        <translation>The computer could not be kept awake: {duvod}</translation>
    </message>
    <message>
        <source>Počítači došla paměť nebo už nemůže mít víc otevřených souborů a procesů.</source>
        <translation>The computer has run out of memory, open files or processes.</translation>
    </message>
    <message>
        <source>Pracuje</source>
        <translation>Working</translation>
    </message>
    <message>
        <source>Pracuje: {cim}</source>
        <translation>Busy: {cim}</translation>
    </message>
    <message>
        <source>Pravidelné souhrny vytvořené na iPhonu se objeví tady a zůstanou dostupné i offline.</source>
        <translation>Regular summaries made on the iPhone appear here and stay available offline.</translation>
    </message>
    <message>
        <source>Proces skončil s kódem {kod}.</source>
        <translation>The process ended with code {kod}.</translation>
    </message>
    <message>
        <source>Protějšek poslal představení, kterému nerozumím.</source>
        <translation>The other side sent an introduction that I do not understand.</translation>
    </message>
    <message>
        <source>Právě to používá jiný program.</source>
        <translation>Another program is using it right now.</translation>
    </message>
    <message>
        <source>Prázdné zadání.</source>
        <translation>The task is empty.</translation>
    </message>
    <message>
        <source>Párování neplatí — {duvod}</source>
        <translation>The pairing is not valid — {duvod}</translation>
    </message>
    <message>
        <source>Párování s telefonem</source>
        <translation>Pairing with a phone</translation>
    </message>
    <message>
        <source>Párování se nepodařilo uložit: {duvod}</source>
        <translation>The pairing could not be saved: {duvod}</translation>
    </message>
    <message>
        <source>Představení protějšku má neplatný podpis. Spojení nešifruju.</source>
        <translation>The other side's introduction has an invalid signature. I do not encrypt the connection.</translation>
    </message>
    <message>
        <source>Představení telefonu má neplatný podpis. Nic jsem neuložil.</source>
        <translation>The phone's introduction has an invalid signature. Nothing was saved.</translation>
    </message>
    <message>
        <source>Přerušeno</source>
        <translation>Interrupted</translation>
    </message>
    <message>
        <source>Při napájení udržovat Morvex dostupný</source>
        <translation>Keep Morvex available on mains power</translation>
    </message>
    <message>
        <source>Přidat aplikaci</source>
        <translation>Add an app</translation>
    </message>
    <message>
        <source>Přidat nebo obnovit složku</source>
        <translation>Add or renew a folder</translation>
    </message>
    <message>
        <source>Přidat složku jde jen odsud. Telefon ani asistentka seznam rozšířit nemůžou.</source>
        <translation>Folders can be added only here. Neither the phone nor the assistant can extend the list.</translation>
    </message>
    <message>
        <source>Přidat vlastní aplikaci</source>
        <translation>Add a custom app</translation>
    </message>
    <message>
        <source>Přidej první aplikaci tady nebo ji synchronizuj z iPhonu.</source>
        <translation>Add the first app here or sync it from the iPhone.</translation>
    </message>
    <message>
        <source>Přidáno na Macu</source>
        <translation>Added on the Mac</translation>
    </message>
    <message>
        <source>Přihlašovací služba systému to nezařídila: {duvod}</source>
        <translation>The login service of the system did not arrange it: {duvod}</translation>
    </message>
    <message>
        <source>Přihlášení Claude Code selhalo. V Terminálu spusť `claude auth login` a potom v aplikaci klikni na Zjistit znovu.</source>
        <translation>The Claude Code login failed. Run `claude auth login` in a terminal, then click Check again in the app.</translation>
    </message>
    <message>
        <source>Připoj vlastní MCP službu přes zabezpečenou HTTPS adresu.</source>
        <translation>Connect an MCP service of your own at a secure HTTPS address.</translation>
    </message>
    <message>
        <source>Připojuji…</source>
        <translation>Connecting…</translation>
    </message>
    <message>
        <source>Připojuji… ({cislo}. pokus)</source>
        <translation>Connecting… (attempt {cislo})</translation>
    </message>
    <message>
        <source>Připomínky</source>
        <translation>Reminders</translation>
    </message>
    <message>
        <source>Připraven</source>
        <translation>Ready</translation>
    </message>
    <message>
        <source>Přístupový token — volitelný</source>
        <translation>Access token — optional</translation>
    </message>
    <message>
        <source>QR kód</source>
        <translation>QR code</translation>
    </message>
    <message>
        <source>QR kód se nepodařilo vykreslit.</source>
        <translation>The QR code could not be drawn.</translation>
    </message>
    <message>
        <source>Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aktuální aplikace Claude.</source>
        <translation>The session could not be opened. Check that the current Claude app is installed.</translation>
    </message>
    <message>
        <source>Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aplikace Codex.</source>
        <translation>The session could not be opened. Check that the Codex app is installed.</translation>
    </message>
    <message>
        <source>Relay</source>
        <translation>Relay</translation>
    </message>
    <message>
        <source>Relay neodpověděl.</source>
        <translation>The relay did not answer.</translation>
    </message>
    <message>
        <source>Relay neposlal výzvu.</source>
        <translation>The relay sent no challenge.</translation>
    </message>
    <message>
        <source>Relay odmítl požadavek ({stav}).</source>
        <translation>The relay refused the request ({stav}).</translation>
    </message>
    <message>
        <source>Server odmítl WebSocket (HTTP {stav}).</source>
        <translation>The server refused the WebSocket (HTTP {stav}).</translation>
    </message>
    <message>
        <source>Server odpověděl nesrozumitelně.</source>
        <translation>The server’s answer cannot be understood.</translation>
    </message>
    <message>
        <source>Server se neozval včas.</source>
        <translation>The server did not answer in time.</translation>
    </message>
    <message>
        <source>Server spojení odmítl. Nejspíš neběží, nebo má jiný port, než je v adrese.</source>
        <translation>The server refused the connection. It is probably not running, or has another port than the address.</translation>
    </message>
    <message>
        <source>Server ukončil spojení (kód {kod}).</source>
        <translation>The server ended the connection (code {kod}).</translation>
    </message>
    <message>
        <source>Server spojení ukončil.</source>
        <translation>The server ended the connection.</translation>
    </message>
    <message>
        <source>Spojení s poštovním serverem selhalo: {potiz}</source>
        <translation>The connection to the mail server failed: {potiz}</translation>
    </message>
    <message>
        <source>Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.</source>
        <translation>The server refused the login. Check the address and the password or app password.</translation>
    </message>
    <message>
        <source>E-mailová adresa není platná.</source>
        <translation>The e-mail address is not valid.</translation>
    </message>
    <message>
        <source>Spojení bylo zrušeno.</source>
        <translation>The connection was cancelled.</translation>
    </message>
    <message>
        <source>Server se do 15 sekund nepřipojil.</source>
        <translation>The server did not connect within 15 seconds.</translation>
    </message>
    <message>
        <source>Server nepřijal data.</source>
        <translation>The server did not accept the data.</translation>
    </message>
    <message>
        <source>Server neodpověděl.</source>
        <translation>The server did not answer.</translation>
    </message>
    <message>
        <source>Server odpověděl: {odpoved}</source>
        <translation>The server answered: {odpoved}</translation>
    </message>
    <message>
        <source>Nesrozumitelná odpověď SMTP serveru.</source>
        <translation>The answer of the SMTP server is not intelligible.</translation>
    </message>
    <message>
        <source>SMTP server odpověděl: {odpoved}</source>
        <translation>The SMTP server answered: {odpoved}</translation>
    </message>
    <message>
        <source>K serveru {server} se nepodařilo připojit: {potiz}</source>
        <translation>Could not connect to the server {server}: {potiz}</translation>
    </message>
    <message>
        <source>Spojení nestíhá odesílat.</source>
        <translation>The connection cannot keep up with sending.</translation>
    </message>
    <message>
        <source>Seznam autorit, kterým tento počítač věří, nejde přečíst.</source>
        <translation>The list of authorities that this computer trusts cannot be read.</translation>
    </message>
    <message>
        <source>Skončilo chybou</source>
        <translation>Failed</translation>
    </message>
    <message>
        <source>Složka {cesta} neexistuje.</source>
        <translation>The folder {cesta} does not exist.</translation>
    </message>
    <message>
        <source>Složka {cesta} už není povolená.</source>
        <translation>The folder {cesta} is no longer allowed.</translation>
    </message>
    <message>
        <source>Složku s daty „{slozka}“ nejde použít: {duvod}</source>
        <translation>The data folder “{slozka}” cannot be used: {duvod}</translation>
    </message>
    <message>
        <source>Služba počítače se neozvala včas.</source>
        <translation>The service of the computer did not answer in time.</translation>
    </message>
    <message>
        <source>Soubor je příliš velký.</source>
        <translation>The file is too large.</translation>
    </message>
    <message>
        <source>Soubor nebo složka neexistuje.</source>
        <translation>The file or folder does not exist.</translation>
    </message>
    <message>
        <source>Soubor není program pro tento počítač.</source>
        <translation>The file is not a program for this computer.</translation>
    </message>
    <message>
        <source>Soubor s nastavením byl poškozený; je odložený jako {soubor}</source>
        <translation>The settings file was damaged; it is set aside as {soubor}</translation>
    </message>
    <message>
        <source>Soubor s nastavením je poškozený a nejde odložit: {duvod}</source>
        <translation>The settings file is damaged and cannot be set aside: {duvod}</translation>
    </message>
    <message>
        <source>Soubor s nastavením nejde přečíst: {duvod}</source>
        <translation>The settings file cannot be read: {duvod}</translation>
    </message>
    <message>
        <source>Soubory</source>
        <translation>Files</translation>
    </message>
    <message>
        <source>Souhlasí</source>
        <translation>They match</translation>
    </message>
    <message>
        <source>Souhrny Morvex</source>
        <translation>Morvex summaries</translation>
    </message>
    <message>
        <source>Spojení</source>
        <translation>Connection</translation>
    </message>
    <message>
        <source>Spojení bylo uzavřeno.</source>
        <translation>The connection was closed.</translation>
    </message>
    <message>
        <source>Spojení je zavřené.</source>
        <translation>The connection is closed.</translation>
    </message>
    <message>
        <source>Spojení přerušeno — {duvod}</source>
        <translation>Connection interrupted — {duvod}</translation>
    </message>
    <message>
        <source>Spojení se přerušilo.</source>
        <translation>The connection was cut off.</translation>
    </message>
    <message>
        <source>Spouští příkazy v povolených složkách a umí spustit jakýkoli kód</source>
        <translation>Runs commands in allowed folders and can run any code</translation>
    </message>
    <message>
        <source>Spouštění po přihlášení se nepodařilo nastavit: {duvod}</source>
        <translation>Starting at login could not be set: {duvod}</translation>
    </message>
    <message>
        <source>Spouštět po přihlášení</source>
        <translation>Start at login</translation>
    </message>
    <message>
        <source>Spravovat</source>
        <translation>Manage</translation>
    </message>
    <message>
        <source>Spárovaný telefon</source>
        <translation>Paired phone</translation>
    </message>
    <message>
        <source>Spárovat jiný telefon</source>
        <translation>Pair another phone</translation>
    </message>
    <message>
        <source>Stav se nepodařilo odeslat: {duvod}</source>
        <translation>The status could not be sent: {duvod}</translation>
    </message>
    <message>
        <source>Synchronizováno z iPhonu</source>
        <translation>Synced from the iPhone</translation>
    </message>
    <message>
        <source>Adresa relaye vede jen na tento počítač. Jiné zařízení se přes ni nepřipojí.</source>
        <translation>The relay address leads to this computer only. No other device can connect through it.</translation>
    </message>
    <message>
        <source>Systém ohlásil chybu, kterou neznám.</source>
        <translation>The system reported an error that I do not know.</translation>
    </message>
    <message>
        <source>Takovou cestu nejde použít.</source>
        <translation>Such a path cannot be used.</translation>
    </message>
    <message>
        <source>Telefon</source>
        <translation>Phone</translation>
    </message>
    <message>
        <source>Telefon a Mac mluví jinou verzí protokolu ({moje} proti {jeho}). Aktualizuj tu starší aplikaci.</source>
        <translation>The phone and the Mac speak different versions of the protocol ({moje} against {jeho}). Update the older app.</translation>
    </message>
    <message>
        <source>Telefon mezitím odešel. Pokud párování vzdal, nepřipojí se a je potřeba ho spárovat znovu.</source>
        <translation>The phone has left meanwhile. If it gave up the pairing, it will not connect and has to be paired again.</translation>
    </message>
    <message>
        <source>Telefon není připojený</source>
        <translation>The phone is not connected</translation>
    </message>
    <message>
        <source>Telefon poslal nekompatibilní párovací zprávu: {duvod}</source>
        <translation>The phone sent an incompatible pairing message: {duvod}</translation>
    </message>
    <message>
        <source>Telefon se ozval. Shoduje se tohle číslo s tím na jeho obrazovce?</source>
        <translation>The phone has answered. Is this number the same as the one on its screen?</translation>
    </message>
    <message>
        <source>Telefon spí ({minut} min)</source>
        <translation>The phone is asleep ({minut} min)</translation>
    </message>
    <message>
        <source>Telefon tenhle Mac přestane vidět. Aby se k němu zase dostal, budeš ho muset znovu spárovat.</source>
        <translation>The phone will no longer see this Mac. You will have to pair it again before it can.</translation>
    </message>
    <message>
        <source>Tento systém nebo disk to neumí.</source>
        <translation>This system or disk cannot do that.</translation>
    </message>
    <message>
        <source>Tento úkol ještě nemá relaci, ve které by šlo pokračovat.</source>
        <translation>This task has no session yet in which it could go on.</translation>
    </message>
    <message>
        <source>Terminál</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Text kódu je zkopírovaný.</source>
        <translation>The text of the code is copied.</translation>
    </message>
    <message>
        <source>To je celý disk: telefon se pak dostane ke všemu, k čemu se tu dostaneš ty.</source>
        <translation>This is the whole disk: the phone will reach everything that you can reach here.</translation>
    </message>
    <message>
        <source>To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům.</source>
        <translation>This is your home folder: the phone will reach all of your files.</translation>
    </message>
    <message>
        <source>Tohle potřebuje potvrzení: {co}</source>
        <translation>This needs to be confirmed: {co}</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message>
        <source>Token se ukládá pouze do Keychainu tohoto Macu.</source>
        <translation>The token is kept in the keychain of this Mac only.</translation>
    </message>
    <message>
        <source>Trezor odmítl mazání {ucet}: {duvod}</source>
        <translation>The vault refused to delete {ucet}: {duvod}</translation>
    </message>
    <message>
        <source>Trezor odmítl zápis {ucet}: {duvod}</source>
        <translation>The vault refused to write {ucet}: {duvod}</translation>
    </message>
    <message>
        <source>Trezor odmítl čtení {ucet}: {duvod}</source>
        <translation>The vault refused to read {ucet}: {duvod}</translation>
    </message>
    <message>
        <source>Tuhle zprávu jsem už jednou zpracoval. Podruhé ji neprovádím.</source>
        <translation>I have handled this message once. I do not carry it out again.</translation>
    </message>
    <message>
        <source>U složek označených níže je potřeba jednou obnovit přístup. Klikni na Přidat nebo obnovit složku a vyber je znovu.</source>
        <translation>Access to the folders marked below has to be renewed once. Click Add or renew a folder and choose them again.</translation>
    </message>
    <message>
        <source>Ukončit Morvex</source>
        <translation>Quit Morvex</translation>
    </message>
    <message>
        <source>Uložená adresa relaye nedává smysl.</source>
        <translation>The stored relay address is not valid.</translation>
    </message>
    <message>
        <source>Uložit</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Upraveno %1</source>
        <translation>Edited %1</translation>
    </message>
    <message>
        <source>Upravit</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>Upravit vlastní aplikaci</source>
        <translation>Edit a custom app</translation>
    </message>
    <message>
        <source>Už běží jiný úkol: {nastroj}. Počkej, nebo ho zruš.</source>
        <translation>Another task is running: {nastroj}. Wait, or cancel it.</translation>
    </message>
    <message>
        <source>V Apple Mailu není nastavený žádný účet.</source>
        <translation>No account is set up in Apple Mail.</translation>
    </message>
    <message>
        <source>V Morvex není povolený žádný poštovní účet.</source>
        <translation>No mail account is allowed in Morvex.</translation>
    </message>
    <message>
        <source>V téhle složce leží tvoje domovská: telefon se pak dostane ke všem tvým souborům.</source>
        <translation>Your home folder lies in this folder: the phone will reach all of your files.</translation>
    </message>
    <message>
        <source>Verze aplikace</source>
        <translation>App version</translation>
    </message>
    <message>
        <source>Verze protokolu</source>
        <translation>Protocol version</translation>
    </message>
    <message>
        <source>Veřejný klíč protějšku není bezpečný.</source>
        <translation>The other side's public key is not safe.</translation>
    </message>
    <message>
        <source>Vlastní aplikace</source>
        <translation>Custom apps</translation>
    </message>
    <message>
        <source>Vlastní aplikace odmítla přístupový token.</source>
        <translation>The custom app refused the access token.</translation>
    </message>
    <message>
        <source>Vlastní aplikace vrátila HTTP {kod}.</source>
        <translation>The custom app answered with HTTP {kod}.</translation>
    </message>
    <message>
        <source>Vlastní aplikace vrátila neplatnou odpověď.</source>
        <translation>The custom app gave an invalid answer.</translation>
    </message>
    <message>
        <source>Vyber v nastavení Morvex výchozí účet pro odesílání.</source>
        <translation>Choose the default account for sending in the settings of Morvex.</translation>
    </message>
    <message>
        <source>Vyber složky, ve kterých smí Morvex pracovat.</source>
        <translation>Choose the folders in which Morvex may work.</translation>
    </message>
    <message>
        <source>Vyhledávání na webu</source>
        <translation>Web search</translation>
    </message>
    <message>
        <source>Vyhrazené místo na disku je vyčerpané.</source>
        <translation>The disk quota is used up.</translation>
    </message>
    <message>
        <source>Vymazat</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Vymazat historii</source>
        <translation>Clear the history</translation>
    </message>
    <message>
        <source>Vymazat historii úkolů?</source>
        <translation>Clear the history of tasks?</translation>
    </message>
    <message>
        <source>Vyžaduje znovu povolit</source>
        <translation>Has to be allowed again</translation>
    </message>
    <message>
        <source>Výchozí volba se synchronizuje z hlavního iPhonu.</source>
        <translation>The default is synced from the main iPhone.</translation>
    </message>
    <message>
        <source>Zadání je pro program příliš dlouhé.</source>
        <translation>The input is too long for the program.</translation>
    </message>
    <message>
        <source>Zakládám pár…</source>
        <translation>Creating a pair…</translation>
    </message>
    <message>
        <source>Zamítnout</source>
        <translation>Deny</translation>
    </message>
    <message>
        <source>Zamítnuto.</source>
        <translation>Refused.</translation>
    </message>
    <message>
        <source>Zamítnuto: {duvod}</source>
        <translation>Denied: {duvod}</translation>
    </message>
    <message>
        <source>Zapni jen služby, které má Morvex na tomto Macu používat.</source>
        <translation>Switch on only the services that Morvex is to use on this Mac.</translation>
    </message>
    <message>
        <source>Zastavit</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Zatím žádný telefon. Morvex for Mac nic nedělá, dokud se nespáruje.</source>
        <translation>No phone yet. Morvex for Mac does nothing until it is paired.</translation>
    </message>
    <message>
        <source>Zavřít</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Zařízení bylo odvoláno.</source>
        <translation>The device was revoked.</translation>
    </message>
    <message>
        <source>Zařízení není spárované. {duvod}</source>
        <translation>The device is not paired. {duvod}</translation>
    </message>
    <message>
        <source>Zjistit znovu</source>
        <translation>Check again</translation>
    </message>
    <message>
        <source>Zjišťuji…</source>
        <translation>Looking…</translation>
    </message>
    <message>
        <source>Zkopírováno</source>
        <translation>Copied</translation>
    </message>
    <message>
        <source>Zkusit hned</source>
        <translation>Try now</translation>
    </message>
    <message>
        <source>Zkusit znovu</source>
        <translation>Try again</translation>
    </message>
    <message>
        <source>Změna se projeví od příštího hlasového rozhovoru a bezpečně se oznámí spárovanému iPhonu.</source>
        <translation>A change takes effect from the next voice conversation on, and the paired iPhone is told of it securely.</translation>
    </message>
    <message>
        <source>Zobrazit QR kód</source>
        <translation>Show QR code</translation>
    </message>
    <message>
        <source>Zpráva chybí.</source>
        <translation>The message is missing.</translation>
    </message>
    <message>
        <source>Zpráva dorazila dřív, než bylo spojení zabezpečené. Zopakuj to.</source>
        <translation>The message came before the connection was secured. Do it again.</translation>
    </message>
    <message>
        <source>Zpráva dorazila mimo dobu své platnosti. Zkontroluj hodiny na obou zařízeních.</source>
        <translation>The message came outside of its time. Check the clocks of both devices.</translation>
    </message>
    <message>
        <source>Zpráva dorazila pozdě, po {vterin} vteřinách. Neprovedl jsem ji.</source>
        <translation>The message came late, after {vterin} seconds. I have not carried it out.</translation>
    </message>
    <message>
        <source>Zpráva je na přenos příliš dlouhá.</source>
        <translation>The message is too long to be sent.</translation>
    </message>
    <message>
        <source>Zpráva je na zašifrování moc dlouhá.</source>
        <translation>The message is too long to be encrypted.</translation>
    </message>
    <message>
        <source>Zpráva je příliš dlouhá.</source>
        <translation>The message is too long.</translation>
    </message>
    <message>
        <source>Zpráva má neznámou hodnotu „{hodnota}“.</source>
        <translation>The message has the unknown value “{hodnota}”.</translation>
    </message>
    <message>
        <source>Zpráva má neznámý druh „{druh}“.</source>
        <translation>The message is of the unknown kind “{druh}”.</translation>
    </message>
    <message>
        <source>Zpráva má nečitelnou hodnotu „{hodnota}“.</source>
        <translation>The value “{hodnota}” of the message cannot be read.</translation>
    </message>
    <message>
        <source>Zpráva má příliš mnoho hodnot.</source>
        <translation>The message has too many values.</translation>
    </message>
    <message>
        <source>Zpráva má číslo mimo rozsah.</source>
        <translation>The number in the message is out of range.</translation>
    </message>
    <message>
        <source>Zpráva má špatný typ ({typ}).</source>
        <translation>The message has a wrong type ({typ}).</translation>
    </message>
    <message>
        <source>Zpráva není platný JSON (bajt {bajt}).</source>
        <translation>The message is not valid JSON (byte {bajt}).</translation>
    </message>
    <message>
        <source>Zpráva není zašifrovaná pro tohle spojení, nebo ji někdo změnil.</source>
        <translation>The message is not encrypted for this connection, or somebody changed it.</translation>
    </message>
    <message>
        <source>Zpráva neprošla ověřením.</source>
        <translation>The message did not pass verification.</translation>
    </message>
    <message>
        <source>Zpráva se opakuje nebo dorazila mimo pořadí.</source>
        <translation>The message is a repetition or came out of order.</translation>
    </message>
    <message>
        <source>Zprávu nejde ověřit: {duvod}</source>
        <translation>The message cannot be verified: {duvod}</translation>
    </message>
    <message>
        <source>Zrušeno.</source>
        <translation>Cancelled.</translation>
    </message>
    <message>
        <source>Zrušit</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Zůstane vzhůru, dokud je v zásuvce</source>
        <translation>Stays awake while it is plugged in</translation>
    </message>
    <message>
        <source>iPhone zůstává hlavní zařízení</source>
        <translation>The iPhone stays the main device</translation>
    </message>
    <message>
        <source>kód {cislo}</source>
        <translation>code {cislo}</translation>
    </message>
    <message>
        <source>macOS nepovolil ovládání aplikace Mail. Otevři Nastavení systému → Soukromí a zabezpečení → Automatizace a povol tam Morvex přístup k Mailu.</source>
        <translation>macOS did not allow Mail to be controlled. Open System Settings → Privacy &amp; Security → Automation and allow Morvex access to Mail there.</translation>
    </message>
    <message>
        <source>objekt</source>
        <translation>object</translation>
    </message>
    <message>
        <source>pole</source>
        <translation>array</translation>
    </message>
    <message>
        <source>položka neexistuje</source>
        <translation>the item does not exist</translation>
    </message>
    <message>
        <source>položka už existuje</source>
        <translation>the item exists already</translation>
    </message>
    <message>
        <source>položku nejde číst nebo zapsat</source>
        <translation>the item cannot be read or written</translation>
    </message>
    <message>
        <source>pravdivostní hodnota</source>
        <translation>truth value</translation>
    </message>
    <message>
        <source>text</source>
        <translation>text</translation>
    </message>
    <message>
        <source>trezor je zamčený</source>
        <translation>the vault is locked</translation>
    </message>
    <message>
        <source>trezor není dostupný</source>
        <translation>the vault is not available</translation>
    </message>
    <message>
        <source>uživatel odemčení zrušil</source>
        <translation>the user cancelled unlocking it</translation>
    </message>
    <message>
        <source>z iPhonu · E2EE</source>
        <translation>from the iPhone · E2EE</translation>
    </message>
    <message>
        <source>Úkoly zadané Codexu nebo Claude přes telefon se objeví tady. Pak v nich můžeš pokračovat jedním kliknutím.</source>
        <translation>Tasks given to Codex or Claude by phone appear here. Then you can go on with them by one click.</translation>
    </message>
    <message>
        <source>Úkoly zůstanou v Claude a Codexu, ale Morvex už k nim nebude nabízet tlačítka pro pokračování.</source>
        <translation>The tasks stay in Claude and Codex, but Morvex will not offer buttons to go on with them any more.</translation>
    </message>
    <message>
        <source>Čeká na potvrzení: %1</source>
        <translation>Waiting for approval: %1</translation>
    </message>
    <message>
        <source>Čekám na OpenAI klíč z iPhonu</source>
        <translation>Waiting for the OpenAI key from the iPhone</translation>
    </message>
    <message>
        <source>Čekám na klíče tohoto počítače. Pokud se klíčenka ptá na heslo, odemkni ji.</source>
        <translation>Waiting for the keys of this computer. If the keyring asks for its password, unlock it.</translation>
    </message>
    <message>
        <source>Čekám na klíče tohoto počítače…</source>
        <translation>Waiting for the keys of this computer…</translation>
    </message>
    <message>
        <source>Část cesty není složka.</source>
        <translation>A part of the path is not a folder.</translation>
    </message>
    <message>
        <source>Čísla se neshodovala. Párování jsem zrušil a nic neuložil. Zkus to znovu; pokud se to bude opakovat, někdo poslouchá.</source>
        <translation>The numbers differed. I have cancelled the pairing and kept nothing. Try again; if it happens repeatedly, somebody is listening.</translation>
    </message>
    <message>
        <source>číslo</source>
        <translation>number</translation>
    </message>
    <message>
        <source>Šifrované spojení se serverem se nepodařilo navázat. Pokud server na tomto portu nešifruje, jeho adresa začíná http://, ne https://.</source>
        <translation>An encrypted connection could not be agreed on with the server. If the server does not encrypt on this port, its address begins with http://, not https://.</translation>
    </message>
    <message>
        <source>Žádná. Bez povolené složky nemá Codex ani Claude Code kde pracovat, takže se telefonu vůbec nenabídnou.</source>
        <translation>None. Without an allowed folder neither Codex nor Claude Code has a place to work, so they are not offered to the phone at all.</translation>
    </message>
    <message>
        <source>Žádné vlastní aplikace</source>
        <translation>No custom apps</translation>
    </message>
    <message>
        <source>Mac není připojený</source>
        <translation>The Mac is not connected</translation>
    </message>
    <message>
        <source>Mac spí ({minut} min)</source>
        <translation>The Mac is asleep ({minut} min)</translation>
    </message>
    <message>
        <source>Vypnuto</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>Nainstaluj: npm i -g @anthropic-ai/claude-code</source>
        <translation>Install it: npm i -g @anthropic-ai/claude-code</translation>
    </message>
    <message>
        <source>Zjišťuji nástroje…</source>
        <translation>Looking for tools…</translation>
    </message>
    <message>
        <source>Nepřipojeno: {duvod}</source>
        <translation>Not connected: {duvod}</translation>
    </message>
    <message>
        <source>Co je vidět z nástrojů aplikací, se nepodařilo uložit: {duvod}</source>
        <translation>What was seen of the apps’ tools could not be saved: {duvod}</translation>
    </message>
    <message>
        <source>Změny nástrojů</source>
        <translation>Changes of tools</translation>
    </message>
    <message>
        <source>Změny nástrojů: %1</source>
        <translation>Changes of tools: %1</translation>
    </message>
    <message>
        <source>Změny nástrojů nejdřív schválit</source>
        <translation>Approve changes of tools first</translation>
    </message>
    <message>
        <source>Změněný nebo nový nástroj pak asistentka nedostane, dokud se na něj nepodíváš.</source>
        <translation>The assistant then does not get a changed or new tool until you have looked at it.</translation>
    </message>
    <message>
        <source>Od posledního pohledu se nic nezměnilo.</source>
        <translation>Nothing has changed since you looked last.</translation>
    </message>
    <message>
        <source>Nový nástroj: %1</source>
        <translation>New tool: %1</translation>
    </message>
    <message>
        <source>Změněný nástroj: %1</source>
        <translation>Changed tool: %1</translation>
    </message>
    <message>
        <source>Bylo: %1</source>
        <translation>It was: %1</translation>
    </message>
    <message>
        <source>Je: %1</source>
        <translation>It is: %1</translation>
    </message>
    <message>
        <source>Mezitím bylo: %1</source>
        <translation>For a while it was: %1</translation>
    </message>
    <message>
        <source>Beru na vědomí</source>
        <translation>I have seen it</translation>
    </message>
    <message>
        <source>Změněné nebo nové nástroje: %1</source>
        <translation>Changed or new tools: %1</translation>
    </message>
    <message>
        <source>Aktuální veřejné informace se zdroji</source>
        <translation>Current public information with sources</translation>
    </message>
    <message>
        <source>Webové hledání selhalo (HTTP {stav}).</source>
        <translation>The web search failed (HTTP {stav}).</translation>
    </message>
    <message>
        <source>Webové hledání vrátilo nečitelnou odpověď.</source>
        <translation>The web search returned an unreadable answer.</translation>
    </message>
    <message>
        <source>Chybí OpenAI API klíč.</source>
        <translation>The OpenAI API key is missing.</translation>
    </message>
    <message>
        <source>Chybí vyhledávací dotaz.</source>
        <translation>The search query is missing.</translation>
    </message>
    <message numerus="yes">
        <source>Připojeno · {pocet} nástrojů · {doba} ms</source>
        <translation>
            <numerusform>Connected · {pocet} tool · {doba} ms</numerusform>
            <numerusform>Connected · {pocet} tools · {doba} ms</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Připojeno · {pocet} nástrojů · {ceka} čeká na schválení · {doba} ms</source>
        <translation>
            <numerusform>Connected · {pocet} tool · {ceka} waiting for approval · {doba} ms</numerusform>
            <numerusform>Connected · {pocet} tools · {ceka} waiting for approval · {doba} ms</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{stav} · {pocet} nástrojů se nedá použít nebo se nevešlo</source>
        <translation>
            <numerusform>{stav} · {pocet} tool cannot be used or did not fit</numerusform>
            <numerusform>{stav} · {pocet} tools cannot be used or did not fit</numerusform>
        </translation>
    </message>
    <message>
        <source>Chybí heslo k poštovnímu účtu.</source>
        <translation>The password of the mail account is missing.</translation>
    </message>
    <message>
        <source>Není nastavený žádný přímý SMTP/IMAP účet.</source>
        <translation>No direct SMTP/IMAP account is set up.</translation>
    </message>
    <message>
        <source>Vyber výchozí SMTP účet nebo řekni jeho název.</source>
        <translation>Choose a default SMTP account or say its name.</translation>
    </message>
    <message>
        <source>Přímé SMTP neumí ukládat koncepty. Pro koncept použij účet v Apple Mailu.</source>
        <translation>Direct SMTP cannot keep drafts. Use an account in Apple Mail for a draft.</translation>
    </message>
    <message>
        <source>SMTP účet „{nazev}“ není připojený.</source>
        <translation>The SMTP account “{nazev}” is not connected.</translation>
    </message>
    <message>
        <source>Zprávu s tímhle číslem jsem nenašel.</source>
        <translation>I found no message with this number.</translation>
    </message>
    <message>
        <source>E-mail byl odeslán z účtu {ucet}.</source>
        <translation>The e-mail was sent from the account {ucet}.</translation>
    </message>
    <message>
        <source>Ověřuji…</source>
        <translation>Checking…</translation>
    </message>
    <message>
        <source>Ověřeno</source>
        <translation>Verified</translation>
    </message>
    <message>
        <source>Chybí adresa nebo server.</source>
        <translation>The address or a server is missing.</translation>
    </message>
    <message>
        <source>Není vybrán</source>
        <translation>None chosen</translation>
    </message>
    <message numerus="yes">
        <source>{pocet} účtů vybráno</source>
        <translation>
            <numerusform>{pocet} account chosen</numerusform>
            <numerusform>{pocet} accounts chosen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} účtů</source>
        <translation>
            <numerusform>{pocet} account</numerusform>
            <numerusform>{pocet} accounts</numerusform>
        </translation>
    </message>
    <message>
        <source>SMTP / IMAP</source>
        <translation>SMTP / IMAP</translation>
    </message>
    <message>
        <source>Přidat účet</source>
        <translation>Add account</translation>
    </message>
    <message>
        <source>Přímé poštovní účty fungují nezávisle na Apple Mailu. Hesla zůstávají v Keychainu tohoto Macu.</source>
        <translation>Direct mail accounts work independently of Apple Mail. Passwords stay in the keychain of this Mac.</translation>
    </message>
    <message>
        <source>Zatím není připojený žádný SMTP účet.</source>
        <translation>No SMTP account is connected yet.</translation>
    </message>
    <message>
        <source>Výchozí účet pro odesílání</source>
        <translation>Default account for sending</translation>
    </message>
    <message>
        <source>Ověřit</source>
        <translation>Check</translation>
    </message>
    <message>
        <source>Nastavit jako výchozí</source>
        <translation>Make default</translation>
    </message>
    <message>
        <source>Upravit SMTP účet</source>
        <translation>Edit SMTP account</translation>
    </message>
    <message>
        <source>Přidat SMTP účet</source>
        <translation>Add SMTP account</translation>
    </message>
    <message>
        <source>Odstranit účet</source>
        <translation>Remove account</translation>
    </message>
    <message>
        <source>Uložit a ověřit</source>
        <translation>Save and check</translation>
    </message>
    <message>
        <source>Stejné údaje jako v iPhone aplikaci. IMAP používá port 993 a SMTP port 465 se šifrováním TLS.</source>
        <translation>The same details as in the iPhone app. IMAP uses port 993 and SMTP port 465, encrypted by TLS.</translation>
    </message>
    <message>
        <source>Název účtu</source>
        <translation>Account name</translation>
    </message>
    <message>
        <source>E-mailová adresa</source>
        <translation>E-mail address</translation>
    </message>
    <message>
        <source>Jméno odesílatele</source>
        <translation>Sender’s name</translation>
    </message>
    <message>
        <source>IMAP server</source>
        <translation>IMAP server</translation>
    </message>
    <message>
        <source>SMTP server</source>
        <translation>SMTP server</translation>
    </message>
    <message>
        <source>Heslo nebo heslo pro aplikaci</source>
        <translation>Password or app password</translation>
    </message>
    <message>
        <source>Služby, které programům nedovolí heslo (Outlook, Microsoft 365), takhle připojit nejde.</source>
        <translation>Services that allow programs no password (Outlook, Microsoft 365) cannot be connected this way.</translation>
    </message>
    <message>
        <source>Morvex zde vidí jen účty přidané přímo do Apple Mailu.</source>
        <translation>Here Morvex sees only accounts that were added to Apple Mail itself.</translation>
    </message>
    <message>
        <source>Odstranit účet „%1“?</source>
        <translation>Remove the account “%1”?</translation>
    </message>
    <message>
        <source>Odstraní se i jeho heslo. Pošta na serveru zůstane.</source>
        <translation>Its password goes too. The mail on the server stays.</translation>
    </message>
    <message>
        <source>Vybrat</source>
        <translation>Choose</translation>
    </message>
    <message>
        <source>{stav}. Na místo upozorní zařízení, která seznam sdílejí, tento počítač ne.</source>
        <translation>{stav}. Devices that share the list alert you at a place; this computer does not.</translation>
    </message>
    <message>
        <source>Vybrat kalendáře</source>
        <translation>Choose calendars</translation>
    </message>
    <message>
        <source>Morvex uvidí pouze označené kalendáře.</source>
        <translation>Morvex will see the selected calendars only.</translation>
    </message>
    <message>
        <source>Jen pro čtení</source>
        <translation>Read only</translation>
    </message>
    <message>
        <source>Výchozí pro nové události</source>
        <translation>Default for new events</translation>
    </message>
    <message>
        <source>Automaticky</source>
        <translation>Automatic</translation>
    </message>
    <message numerus="yes">
        <source>{pocet} kalendářů vybráno</source>
        <translation>
            <numerusform>{pocet} calendar selected</numerusform>
            <numerusform>{pocet} calendars selected</numerusform>
        </translation>
    </message>
    <message>
        <source>Tahle verze to ještě neumí.</source>
        <translation>This version cannot do that yet.</translation>
    </message>
</context>
</TS>
