<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="cs">
<context>
    <name>Morvex</name>
    <message numerus="yes">
        <source>{pocet} povolených složek</source>
        <translation>
            <numerusform>{pocet} erlaubter Ordner</numerusform>
            <numerusform>{pocet} erlaubte Ordner</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} připojeno</source>
        <translation>
            <numerusform>{pocet} verbunden</numerusform>
            <numerusform>{pocet} verbunden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} nástrojů</source>
        <translation>
            <numerusform>{pocet} Tool</numerusform>
            <numerusform>{pocet} Tools</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} synchronizováno</source>
        <translation>
            <numerusform>{pocet} synchronisiert</numerusform>
            <numerusform>{pocet} synchronisiert</numerusform>
        </translation>
    </message>
    <message>
        <source>{nastroj} skončil chybou: {zprava}</source>
        <translation>{nastroj} endete mit einem Fehler: {zprava}</translation>
    </message>
    <message>
        <source>Adresa</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Adresa relaye nedává smysl.</source>
        <translation>Die Adresse des Relay ergibt keinen Sinn.</translation>
    </message>
    <message>
        <source>Adresa relaye začíná https:// nebo http://. Napiš „{adresa}“.</source>
        <translation>Die Adresse eines Relays beginnt mit https:// oder http://. Schreibe „{adresa}“.</translation>
    </message>
    <message>
        <source>Adresa serveru není platná.</source>
        <translation>Die Adresse des Servers ist ungültig.</translation>
    </message>
    <message>
        <source>Adresa vlastní aplikace musí být platné HTTPS.</source>
        <translation>Die Adresse der eigenen App muss gültiges HTTPS sein.</translation>
    </message>
    <message>
        <source>Apple Mail existuje jen v systému macOS.</source>
        <translation>Apple Mail gibt es nur unter macOS.</translation>
    </message>
    <message>
        <source>Apple Mail neposkytl podporované automatizační rozhraní.</source>
        <translation>Apple Mail bietet keine unterstützte Automatisierungsschnittstelle.</translation>
    </message>
    <message>
        <source>Binárka nalezena, ale `--version` neodpovědělo. Zkontroluj instalaci.</source>
        <translation>Das Programm wurde gefunden, aber `--version` hat nicht geantwortet. Prüfe die Installation.</translation>
    </message>
    <message>
        <source>Binárku „{binarka}“ jsem nenašel (prohledáno {pocet} adresářů). {napoveda}</source>
        <translation>Das Programm „{binarka}“ wurde nicht gefunden ({pocet} Ordner durchsucht). {napoveda}</translation>
    </message>
    <message>
        <source>Byl požadován nástroj {nastroj}, který tento Mac neumí.</source>
        <translation>Das Tool {nastroj} wurde verlangt, das dieser Mac nicht hat.</translation>
    </message>
    <message>
        <source>Běží: %1</source>
        <translation>Läuft: %1</translation>
    </message>
    <message>
        <source>Certifikát serveru je vydaný pro jinou adresu. Zkontroluj adresu serveru.</source>
        <translation>Das Zertifikat des Servers gilt für eine andere Adresse. Prüfe die Adresse des Servers.</translation>
    </message>
    <message>
        <source>Certifikát serveru ještě neplatí. Zkontroluj hodiny počítače.</source>
        <translation>Das Zertifikat des Servers gilt noch nicht. Prüfe die Uhr des Computers.</translation>
    </message>
    <message>
        <source>Certifikát serveru není v pořádku.</source>
        <translation>Das Zertifikat des Servers ist nicht in Ordnung.</translation>
    </message>
    <message>
        <source>Certifikát serveru nevydala autorita, které tento počítač věří. Certifikát vlastní autority ulož s příponou .crt do /usr/local/share/ca-certificates a spusť sudo update-ca-certificates.</source>
        <translation>Das Zertifikat des Servers stammt von keiner Zertifizierungsstelle, der dieser Computer vertraut. Lege das Zertifikat deiner eigenen Stelle mit der Endung .crt in /usr/local/share/ca-certificates ab und führe sudo update-ca-certificates aus.</translation>
    </message>
    <message>
        <source>Cesta {cesta} leží mimo povolené složky. Nesahám na ni.</source>
        <translation>Der Pfad {cesta} liegt außerhalb der erlaubten Ordner. Ich fasse ihn nicht an.</translation>
    </message>
    <message>
        <source>Cesta vede mimo svou složku nebo na jiný disk.</source>
        <translation>Der Pfad führt aus seinem Ordner hinaus oder auf einen anderen Datenträger.</translation>
    </message>
    <message>
        <source>Cesta vede přes odkaz, který nejde sledovat.</source>
        <translation>Der Pfad führt über einen Verweis, dem nicht gefolgt werden kann.</translation>
    </message>
    <message>
        <source>Chybí k tomu oprávnění.</source>
        <translation>Dafür fehlt die Berechtigung.</translation>
    </message>
    <message>
        <source>Chybí název nebo platný čas události.</source>
        <translation>Der Name oder eine gültige Zeit des Ereignisses fehlt.</translation>
    </message>
    <message>
        <source>Claude Code je nainstalovaný, ale přihlášení není platné nebo kontrola neodpověděla. V Terminálu spusť `claude auth login` a potom zde klikni na Zjistit znovu.</source>
        <translation>Claude Code ist installiert, aber die Anmeldung ist ungültig oder die Prüfung hat nicht geantwortet. Führe im Terminal `claude auth login` aus und klicke dann hier auf Erneut suchen.</translation>
    </message>
    <message>
        <source>Claude Code skončil chybou.</source>
        <translation>Claude Code endete mit einem Fehler.</translation>
    </message>
    <message>
        <source>Codex skončil chybou.</source>
        <translation>Codex endete mit einem Fehler.</translation>
    </message>
    <message>
        <source>Další pokus za {vterin} s</source>
        <translation>Nächster Versuch in {vterin} s</translation>
    </message>
    <message>
        <source>Disk je jen pro čtení.</source>
        <translation>Der Datenträger ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>Disk nebo jiné zařízení selhalo.</source>
        <translation>Der Datenträger oder ein anderes Gerät hat versagt.</translation>
    </message>
    <message>
        <source>Doplň název vlastní aplikace.</source>
        <translation>Gib der eigenen App einen Namen.</translation>
    </message>
    <message>
        <source>Dostupnost</source>
        <translation>Verfügbarkeit</translation>
    </message>
    <message>
        <source>Historii úkolů se nepodařilo načíst: {duvod}</source>
        <translation>Der Verlauf der Aufgaben ließ sich nicht lesen: {duvod}</translation>
    </message>
    <message>
        <source>Historii úkolů se nepodařilo uložit: {duvod}</source>
        <translation>Der Verlauf der Aufgaben ließ sich nicht speichern: {duvod}</translation>
    </message>
    <message>
        <source>Hlas na Macu</source>
        <translation>Stimme am Mac</translation>
    </message>
    <message>
        <source>Hlasový rozhovor tahle verze ještě neumí.</source>
        <translation>Ein Gespräch per Stimme beherrscht diese Version noch nicht.</translation>
    </message>
    <message>
        <source>Hlavička požadavku je příliš dlouhá.</source>
        <translation>Der Kopf der Anfrage ist zu lang.</translation>
    </message>
    <message>
        <source>Hlavička požadavku má neplatné znaky.</source>
        <translation>Der Kopf der Anfrage enthält ungültige Zeichen.</translation>
    </message>
    <message>
        <source>Hledání místa selhalo.</source>
        <translation>Die Suche nach dem Ort ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Hotovo</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Identita zprávy nebo požadavku obsahuje svislou čáru.</source>
        <translation>Die Kennung der Nachricht oder der Anfrage enthält einen senkrechten Strich.</translation>
    </message>
    <message>
        <source>Identifikátor</source>
        <translation>Kennung</translation>
    </message>
    <message>
        <source>Integrace</source>
        <translation>Integrationen</translation>
    </message>
    <message>
        <source>Invalid number of keys found, expected one.</source>
        <translation>Die Nachricht müsste genau einen Fall haben.</translation>
    </message>
    <message>
        <source>Jazyk aplikace a asistentky</source>
        <translation>Sprache der App und der Assistentin</translation>
    </message>
    <message>
        <source>Jednorázové číslo zprávy má špatnou délku.</source>
        <translation>Die Einmalzahl der Nachricht hat eine falsche Länge.</translation>
    </message>
    <message>
        <source>Jméno nebo cesta je příliš dlouhá.</source>
        <translation>Der Name oder Pfad ist zu lang.</translation>
    </message>
    <message>
        <source>Jméno serveru síť nezná. Zkontroluj adresu a připojení k síti.</source>
        <translation>Das Netz kennt den Namen des Servers nicht. Prüfe die Adresse und die Netzverbindung.</translation>
    </message>
    <message>
        <source>Jméno už je obsazené.</source>
        <translation>Der Name ist schon vergeben.</translation>
    </message>
    <message>
        <source>K serveru nevede cesta. Zkontroluj připojení k síti.</source>
        <translation>Es gibt keinen Weg zum Server. Prüfe die Netzverbindung.</translation>
    </message>
    <message>
        <source>Kalendář</source>
        <translation>Kalender</translation>
    </message>
    <message>
        <source>Kalendář je povolený pouze pro zápis</source>
        <translation>Der Kalender ist nur zum Schreiben erlaubt</translation>
    </message>
    <message>
        <source>Kalendář je připojený</source>
        <translation>Der Kalender ist verbunden</translation>
    </message>
    <message>
        <source>Kalendář čeká na povolení</source>
        <translation>Der Kalender wartet auf die Erlaubnis</translation>
    </message>
    <message>
        <source>Když se čísla liší, nepotvrzuj. Znamená to, že mezi telefonem a Macem někdo je.</source>
        <translation>Wenn die Zahlen verschieden sind, bestätige nicht. Dann steht jemand zwischen Telefon und Mac.</translation>
    </message>
    <message>
        <source>Keychain error {stav}</source>
        <translation>Schlüsselbundfehler {stav}</translation>
    </message>
    <message>
        <source>Kliknutím zkopíruješ text kódu.</source>
        <translation>Ein Klick kopiert den Text des Codes.</translation>
    </message>
    <message>
        <source>Klávesová zkratka pro hlas</source>
        <translation>Tastenkürzel für die Stimme</translation>
    </message>
    <message>
        <source>Klíč má mít {ocekavano} bajtů, má jich {dostal}.</source>
        <translation>Der Schlüssel muss {ocekavano} Bytes haben, er hat {dostal}.</translation>
    </message>
    <message>
        <source>Klíč pro spojení nejde odvodit: {duvod}</source>
        <translation>Der Schlüssel der Verbindung lässt sich nicht ableiten: {duvod}</translation>
    </message>
    <message>
        <source>Klíč telefonu nejde použít: {duvod}</source>
        <translation>Der Schlüssel des Telefons ist nicht verwendbar: {duvod}</translation>
    </message>
    <message>
        <source>Klíče leží v souborech, které smí číst jen tvůj účet, protože tu není klíčenka.</source>
        <translation>Die Schlüssel liegen in Dateien, die nur dein Konto lesen darf, weil es hier keinen Schlüsselbund gibt.</translation>
    </message>
    <message>
        <source>Klíčenka zůstala zamčená.</source>
        <translation>Der Schlüsselbund blieb gesperrt.</translation>
    </message>
    <message>
        <source>Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí.</source>
        <translation>Der Schlüsselbund blieb gesperrt. Er enthält die Schlüssel dieses Computers; ohne sie kann sich das Telefon nicht verbinden.</translation>
    </message>
    <message>
        <source>Kontakty</source>
        <translation>Kontakte</translation>
    </message>
    <message>
        <source>Kontakty jsou připojené</source>
        <translation>Die Kontakte sind verbunden</translation>
    </message>
    <message>
        <source>Kontakty čekají na povolení</source>
        <translation>Die Kontakte warten auf die Erlaubnis</translation>
    </message>
    <message>
        <source>Kopírovat</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Kryptografická knihovna selhala.</source>
        <translation>Die kryptografische Bibliothek hat versagt.</translation>
    </message>
    <message>
        <source>Kód platí do %1. Po vypršení si nech zobrazit nový — krátká platnost je záměr.</source>
        <translation>Der Code gilt bis %1. Lass dir danach einen neuen zeigen — die kurze Gültigkeit ist Absicht.</translation>
    </message>
    <message>
        <source>Mac není dostupný.</source>
        <translation>Der Mac ist nicht verfügbar.</translation>
    </message>
    <message>
        <source>Mac právě pracuje: {cim}.</source>
        <translation>Der Mac arbeitet gerade: {cim}.</translation>
    </message>
    <message>
        <source>Mac spí</source>
        <translation>Der Mac schläft</translation>
    </message>
    <message>
        <source>Mail neodpověděl včas. Zkus menší počet zpráv.</source>
        <translation>Mail hat nicht rechtzeitig geantwortet. Versuche es mit weniger Nachrichten.</translation>
    </message>
    <message>
        <source>Mail operaci odmítl.</source>
        <translation>Mail hat den Vorgang abgelehnt.</translation>
    </message>
    <message>
        <source>Mail vrátil něco, čemu nerozumím.</source>
        <translation>Mail hat etwas zurückgegeben, das ich nicht verstehe.</translation>
    </message>
    <message>
        <source>Mluvit bez držení</source>
        <translation>Freihändig sprechen</translation>
    </message>
    <message>
        <source>Morvex běží bez systémového sandboxu, protože pouští tvoje vlastní programy a pracuje v tvých složkách. Přístup k souborům hlídá seznam povolených složek.</source>
        <translation>Morvex läuft ohne die Sandbox des Systems, weil es deine eigenen Programme startet und in deinen Ordnern arbeitet. Den Zugriff auf Dateien bewacht die Liste der erlaubten Ordner.</translation>
    </message>
    <message>
        <source>Morvex nemá plný přístup ke kalendářům na tomto Macu. Povol ho v okně Morvex nebo v Nastavení systému → Soukromí a zabezpečení → Kalendáře.</source>
        <translation>Morvex hat keinen vollen Zugriff auf die Kalender auf diesem Mac. Erlaube ihn im Fenster von Morvex oder in Systemeinstellungen → Datenschutz &amp; Sicherheit → Kalender.</translation>
    </message>
    <message>
        <source>Morvex nemá přístup k připomínkám tohoto Macu.</source>
        <translation>Morvex hat keinen Zugriff auf die Erinnerungen dieses Mac.</translation>
    </message>
    <message>
        <source>Morvex nemá přístup ke kontaktům tohoto Macu.</source>
        <translation>Morvex hat keinen Zugriff auf die Kontakte dieses Mac.</translation>
    </message>
    <message>
        <source>Místo pro polohovou připomínku se nepodařilo najít.</source>
        <translation>Der Ort für die ortsabhängige Erinnerung wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>Na Macu není dostupný seznam připomínek pro zápis.</source>
        <translation>Auf dem Mac ist keine Erinnerungsliste zum Schreiben verfügbar.</translation>
    </message>
    <message>
        <source>Na Macu není kalendář, do kterého lze zapisovat.</source>
        <translation>Auf dem Mac gibt es keinen Kalender, in den man schreiben kann.</translation>
    </message>
    <message>
        <source>Na baterii Mac usne bez ohledu na tohle nastavení. Bránit spánku bez napájení by ti vybilo notebook v tašce.</source>
        <translation>Im Akkubetrieb schläft der Mac unabhängig von dieser Einstellung ein. Den Ruhezustand ohne Netzstrom zu verhindern würde das Notebook in deiner Tasche leeren.</translation>
    </message>
    <message>
        <source>Na baterii usne — držení vzhůru platí jen při napájení</source>
        <translation>Schläft im Akkubetrieb ein — wach bleibt er nur bei Netzstrom</translation>
    </message>
    <message>
        <source>Poštovní účet „{nazev}“ není v Morvex povolený.</source>
        <translation>Das Mail-Konto „{nazev}“ ist in Morvex nicht erlaubt.</translation>
    </message>
    <message>
        <source>Připomínku jsem nenašel.</source>
        <translation>Ich habe die Erinnerung nicht gefunden.</translation>
    </message>
    <message>
        <source>Připomínky jsou povolené pouze pro zápis</source>
        <translation>Die Erinnerungen sind nur zum Schreiben erlaubt</translation>
    </message>
    <message>
        <source>Připomínky jsou připojené</source>
        <translation>Die Erinnerungen sind verbunden</translation>
    </message>
    <message>
        <source>Připomínky čekají na povolení</source>
        <translation>Die Erinnerungen warten auf die Erlaubnis</translation>
    </message>
    <message>
        <source>Přístup k připomínkám byl zamítnut</source>
        <translation>Der Zugriff auf die Erinnerungen wurde abgelehnt</translation>
    </message>
    <message>
        <source>Přístup k připomínkám je systémem omezený</source>
        <translation>Der Zugriff auf die Erinnerungen ist vom System eingeschränkt</translation>
    </message>
    <message>
        <source>Přístup ke kalendáři byl zamítnut</source>
        <translation>Der Zugriff auf den Kalender wurde abgelehnt</translation>
    </message>
    <message>
        <source>Přístup ke kalendáři je systémem omezený</source>
        <translation>Der Zugriff auf den Kalender ist vom System eingeschränkt</translation>
    </message>
    <message>
        <source>Přístup ke kontaktům byl zamítnut</source>
        <translation>Der Zugriff auf die Kontakte wurde abgelehnt</translation>
    </message>
    <message>
        <source>Přístup ke kontaktům je systémem omezený</source>
        <translation>Der Zugriff auf die Kontakte ist vom System eingeschränkt</translation>
    </message>
    <message>
        <source>Soubor s ním při startu nešel přečíst. Ukonči Morvex a spusť ho znovu.</source>
        <translation>Die Datei konnte beim Start nicht gelesen werden. Beende Morvex und starte es neu.</translation>
    </message>
    <message>
        <source>Stav kalendáře není známý</source>
        <translation>Der Zustand des Kalenders ist nicht bekannt</translation>
    </message>
    <message>
        <source>Stav kontaktů není známý</source>
        <translation>Der Zustand der Kontakte ist nicht bekannt</translation>
    </message>
    <message>
        <source>Stav připomínek není známý</source>
        <translation>Der Zustand der Erinnerungen ist nicht bekannt</translation>
    </message>
    <message>
        <source>Systémová služba neodpověděla včas.</source>
        <translation>Der Systemdienst hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>Tento kalendář není v Morvex povolený.</source>
        <translation>Dieser Kalender ist in Morvex nicht erlaubt.</translation>
    </message>
    <message>
        <source>Tento počítač nemá službu kalendářů, připomínek a kontaktů.</source>
        <translation>Dieser Computer hat keinen Dienst für Kalender, Erinnerungen und Kontakte.</translation>
    </message>
    <message>
        <source>Událost už v kalendáři nemohu najít.</source>
        <translation>Ich finde das Ereignis nicht mehr im Kalender.</translation>
    </message>
    <message>
        <source>Vybraný kalendář je pouze pro čtení.</source>
        <translation>Der gewählte Kalender ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>Zrušené párování se nepodařilo smazat: {duvod}</source>
        <translation>Die abgebrochene Kopplung konnte nicht gelöscht werden: {duvod}</translation>
    </message>
    <message>
        <source>Odpojení telefonu se nepodařilo uložit: {duvod}</source>
        <translation>Das Trennen des Telefons konnte nicht gespeichert werden: {duvod}</translation>
    </message>
    <message>
        <source>Na disku není místo.</source>
        <translation>Auf dem Datenträger ist kein Platz.</translation>
    </message>
    <message>
        <source>Na tomto počítači taková služba neběží.</source>
        <translation>Auf diesem Computer läuft kein solcher Dienst.</translation>
    </message>
    <message>
        <source>Na této cestě je složka.</source>
        <translation>Unter diesem Pfad liegt ein Ordner.</translation>
    </message>
    <message>
        <source>Nahrát vlastní zkratku</source>
        <translation>Eigenes Kürzel aufnehmen</translation>
    </message>
    <message>
        <source>Nainstalováno</source>
        <translation>Installiert</translation>
    </message>
    <message>
        <source>Nainstaluj: npm i -g @openai/codex (nebo brew install codex). Codex ve webovém ChatGPT ani rozšíření do editoru žádné CLI neinstalují.</source>
        <translation>Installiere es: npm i -g @openai/codex (oder brew install codex). Weder Codex auf der ChatGPT-Webseite noch die Editor-Erweiterungen installieren ein CLI.</translation>
    </message>
    <message>
        <source>Nastavení se mezitím změnilo.</source>
        <translation>Die Einstellungen wurden inzwischen geändert.</translation>
    </message>
    <message>
        <source>Nastavení se nepodařilo uložit: {duvod}</source>
        <translation>Die Einstellungen ließen sich nicht speichern: {duvod}</translation>
    </message>
    <message>
        <source>Načti tento kód v aplikaci Morvex na telefonu.</source>
        <translation>Lies diesen Code in der App Morvex auf dem Telefon ein.</translation>
    </message>
    <message>
        <source>Nejde to přečíst jako base64.</source>
        <translation>Es ist nicht als base64 lesbar.</translation>
    </message>
    <message>
        <source>Nenainstalováno</source>
        <translation>Nicht installiert</translation>
    </message>
    <message>
        <source>Nepodařilo se spustit: {duvod}</source>
        <translation>Ließ sich nicht starten: {duvod}</translation>
    </message>
    <message>
        <source>Neshoduje se</source>
        <translation>Stimmt nicht überein</translation>
    </message>
    <message>
        <source>Nespárováno</source>
        <translation>Nicht gekoppelt</translation>
    </message>
    <message>
        <source>Neznámý druh rámce.</source>
        <translation>Unbekannte Art von Frame.</translation>
    </message>
    <message>
        <source>Neznámý nástroj.</source>
        <translation>Unbekanntes Tool.</translation>
    </message>
    <message>
        <source>Nečekaná odpověď na přihlášení.</source>
        <translation>Unerwartete Antwort auf die Anmeldung.</translation>
    </message>
    <message>
        <source>Nový token — ponech prázdné beze změny</source>
        <translation>Neues Token — leer lassen, um es zu behalten</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není na Macu k dispozici: {duvod}</source>
        <translation>Das Tool {nastroj} ist am Mac nicht verfügbar: {duvod}</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není nainstalovaný.</source>
        <translation>Das Tool {nastroj} ist nicht installiert.</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není povolený: {duvod}</source>
        <translation>Das Tool {nastroj} ist nicht erlaubt: {duvod}</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} neznám.</source>
        <translation>Das Tool {nastroj} ist unbekannt.</translation>
    </message>
    <message>
        <source>Nástroj nevrátil žádný text.</source>
        <translation>Das Tool gab keinen Text zurück.</translation>
    </message>
    <message>
        <source>Nástroje Macu</source>
        <translation>Tools des Mac</translation>
    </message>
    <message>
        <source>Název</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>O aplikaci</source>
        <translation>Über die App</translation>
    </message>
    <message>
        <source>Obnovit stav</source>
        <translation>Stand auffrischen</translation>
    </message>
    <message>
        <source>Obálka je od jiného zařízení.</source>
        <translation>Der Umschlag kommt von einem anderen Gerät.</translation>
    </message>
    <message>
        <source>Obálka není pro mě.</source>
        <translation>Der Umschlag ist nicht für mich.</translation>
    </message>
    <message>
        <source>Obálka patří jinému páru.</source>
        <translation>Der Umschlag gehört zu einem anderen Paar.</translation>
    </message>
    <message>
        <source>Odebere se i její token. Asistentka pak její nástroje nebude mít.</source>
        <translation>Auch ihr Token wird entfernt. Die Assistentin hat ihre Tools dann nicht mehr.</translation>
    </message>
    <message>
        <source>Odebrat</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Odebrat aplikaci „%1“?</source>
        <translation>App „%1“ entfernen?</translation>
    </message>
    <message>
        <source>Odpojit</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <source>Odpojit telefon</source>
        <translation>Telefon trennen</translation>
    </message>
    <message>
        <source>Odpojit telefon?</source>
        <translation>Telefon trennen?</translation>
    </message>
    <message>
        <source>Odpověď serveru je příliš dlouhá.</source>
        <translation>Die Antwort des Servers ist zu lang.</translation>
    </message>
    <message>
        <source>OpenAI klíč bezpečně převzat z iPhonu</source>
        <translation>OpenAI-Schlüssel sicher vom iPhone übernommen</translation>
    </message>
    <message>
        <source>Operace překročila limit {vterin} vteřin a byla zastavena.</source>
        <translation>Der Vorgang überschritt die Grenze von {vterin} Sekunden und wurde angehalten.</translation>
    </message>
    <message>
        <source>Operace skončila dřív, než dala výsledek.</source>
        <translation>Der Vorgang endete, bevor er ein Ergebnis lieferte.</translation>
    </message>
    <message>
        <source>Oprávnění ke složce {slozka} se nepodařilo uložit: {duvod}</source>
        <translation>Die Erlaubnis für den Ordner {slozka} ließ sich nicht speichern: {duvod}</translation>
    </message>
    <message>
        <source>Osobní data</source>
        <translation>Persönliche Daten</translation>
    </message>
    <message>
        <source>Otevřít nastavení</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Otisk klíče nesedí.</source>
        <translation>Der Fingerabdruck des Schlüssels passt nicht.</translation>
    </message>
    <message>
        <source>Ověřovací značka zprávy má špatnou délku.</source>
        <translation>Das Prüfzeichen der Nachricht hat eine falsche Länge.</translation>
    </message>
    <message>
        <source>Platnost certifikátu serveru skončila. Zkontroluj hodiny počítače, nebo na serveru certifikát obnov.</source>
        <translation>Das Zertifikat des Servers ist abgelaufen. Prüfe die Uhr des Computers oder erneuere das Zertifikat auf dem Server.</translation>
    </message>
    <message>
        <source>Po chvíli nečinnosti usne a přestane být dostupný</source>
        <translation>Schläft nach einiger Zeit ohne Nutzung ein und ist dann nicht erreichbar</translation>
    </message>
    <message>
        <source>Podle iPhonu</source>
        <translation>Wie auf dem iPhone</translation>
    </message>
    <message>
        <source>Podpis zprávy nesedí. Spojení jsem zahodil.</source>
        <translation>Die Unterschrift der Nachricht passt nicht. Ich habe die Verbindung verworfen.</translation>
    </message>
    <message>
        <source>Pokračovat v Claude</source>
        <translation>In Claude fortsetzen</translation>
    </message>
    <message>
        <source>Pokračovat v Codexu</source>
        <translation>In Codex fortsetzen</translation>
    </message>
    <message>
        <source>Pole „{pole}“ chybí.</source>
        <translation>Das Feld „{pole}“ fehlt.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má neznámou hodnotu „{hodnota}“.</source>
        <translation>Das Feld „{pole}“ hat den unbekannten Wert „{hodnota}“.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má neznámý druh „{druh}“.</source>
        <translation>Das Feld „{pole}“ ist von der unbekannten Art „{druh}“.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má nečitelnou hodnotu „{hodnota}“.</source>
        <translation>Der Wert „{hodnota}“ im Feld „{pole}“ ist nicht lesbar.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má číslo mimo rozsah.</source>
        <translation>Die Zahl im Feld „{pole}“ liegt außerhalb des Bereichs.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má špatný typ ({typ}).</source>
        <translation>Das Feld „{pole}“ hat einen falschen Typ ({typ}).</translation>
    </message>
    <message>
        <source>Poslední změnu z telefonu se nepodařilo uložit: {duvod}</source>
        <translation>Die letzte Änderung vom Telefon ließ sich nicht speichern: {duvod}</translation>
    </message>
    <message>
        <source>Poslední úkoly</source>
        <translation>Letzte Aufgaben</translation>
    </message>
    <message>
        <source>Potvrdit</source>
        <translation>Bestätigen</translation>
    </message>
    <message>
        <source>Potvrdit můžeš tady i hlasem na telefonu. Bez potvrzení se neprovede nic — ani po vypršení.</source>
        <translation>Du kannst hier oder per Stimme am Telefon bestätigen. Ohne Bestätigung geschieht nichts — auch nicht nach Ablauf.</translation>
    </message>
    <message>
        <source>Potvrzeno %1</source>
        <translation>Bestätigt %1</translation>
    </message>
    <message>
        <source>Povolené složky</source>
        <translation>Erlaubte Ordner</translation>
    </message>
    <message>
        <source>Povolit</source>
        <translation>Erlauben</translation>
    </message>
    <message>
        <source>Povolit akci na Macu</source>
        <translation>Eine Aktion am Mac erlauben</translation>
    </message>
    <message>
        <source>Povolit složku %1?</source>
        <translation>Ordner %1 erlauben?</translation>
    </message>
    <message>
        <source>Poznámka „{nazev}“ je na přenos příliš dlouhá, telefon ji nedostane.</source>
        <translation>Die Notiz „{nazev}“ ist zu lang zum Übertragen; das Telefon bekommt sie nicht.</translation>
    </message>
    <message>
        <source>Poznámky Morvex</source>
        <translation>Morvex-Notizen</translation>
    </message>
    <message>
        <source>Poznámky vytvořené na iPhonu se po zabezpečeném spojení objeví tady a zůstanou dostupné i offline.</source>
        <translation>Auf dem iPhone erstellte Notizen erscheinen hier, sobald die Verbindung gesichert ist, und bleiben auch offline verfügbar.</translation>
    </message>
    <message>
        <source>Počítač se nepodařilo udržet vzhůru: {duvod}</source>
        <translation>Der Computer ließ sich nicht wach halten: {duvod}</translation>
    </message>
    <message>
        <source>Počítači došla paměť nebo už nemůže mít víc otevřených souborů a procesů.</source>
        <translation>Dem Computer fehlen Speicher, offene Dateien oder Prozesse.</translation>
    </message>
    <message>
        <source>Pracuje</source>
        <translation>Arbeitet</translation>
    </message>
    <message>
        <source>Pracuje: {cim}</source>
        <translation>Beschäftigt: {cim}</translation>
    </message>
    <message>
        <source>Pravidelné souhrny vytvořené na iPhonu se objeví tady a zůstanou dostupné i offline.</source>
        <translation>Regelmäßige Zusammenfassungen vom iPhone erscheinen hier und bleiben auch offline verfügbar.</translation>
    </message>
    <message>
        <source>Proces skončil s kódem {kod}.</source>
        <translation>Der Prozess endete mit dem Code {kod}.</translation>
    </message>
    <message>
        <source>Protějšek poslal představení, kterému nerozumím.</source>
        <translation>Die Gegenseite hat eine Vorstellung gesendet, die ich nicht verstehe.</translation>
    </message>
    <message>
        <source>Právě to používá jiný program.</source>
        <translation>Ein anderes Programm verwendet es gerade.</translation>
    </message>
    <message>
        <source>Prázdné zadání.</source>
        <translation>Die Aufgabe ist leer.</translation>
    </message>
    <message>
        <source>Párování neplatí — {duvod}</source>
        <translation>Die Kopplung ist ungültig — {duvod}</translation>
    </message>
    <message>
        <source>Párování s telefonem</source>
        <translation>Kopplung mit einem Telefon</translation>
    </message>
    <message>
        <source>Párování se nepodařilo uložit: {duvod}</source>
        <translation>Die Kopplung ließ sich nicht speichern: {duvod}</translation>
    </message>
    <message>
        <source>Představení protějšku má neplatný podpis. Spojení nešifruju.</source>
        <translation>Die Vorstellung der Gegenseite hat eine ungültige Unterschrift. Ich verschlüssele die Verbindung nicht.</translation>
    </message>
    <message>
        <source>Představení telefonu má neplatný podpis. Nic jsem neuložil.</source>
        <translation>Die Vorstellung des Telefons hat eine ungültige Unterschrift. Ich habe nichts gespeichert.</translation>
    </message>
    <message>
        <source>Přerušeno</source>
        <translation>Unterbrochen</translation>
    </message>
    <message>
        <source>Při napájení udržovat Morvex dostupný</source>
        <translation>Morvex bei Netzstrom verfügbar halten</translation>
    </message>
    <message>
        <source>Přidat aplikaci</source>
        <translation>App hinzufügen</translation>
    </message>
    <message>
        <source>Přidat nebo obnovit složku</source>
        <translation>Ordner hinzufügen oder erneuern</translation>
    </message>
    <message>
        <source>Přidat složku jde jen odsud. Telefon ani asistentka seznam rozšířit nemůžou.</source>
        <translation>Ordner lassen sich nur hier hinzufügen. Weder das Telefon noch die Assistentin kann die Liste erweitern.</translation>
    </message>
    <message>
        <source>Přidat vlastní aplikaci</source>
        <translation>Eigene App hinzufügen</translation>
    </message>
    <message>
        <source>Přidej první aplikaci tady nebo ji synchronizuj z iPhonu.</source>
        <translation>Füge hier die erste App hinzu oder synchronisiere sie vom iPhone.</translation>
    </message>
    <message>
        <source>Přidáno na Macu</source>
        <translation>Am Mac hinzugefügt</translation>
    </message>
    <message>
        <source>Přihlašovací služba systému to nezařídila: {duvod}</source>
        <translation>Der Anmeldedienst des Systems hat es nicht eingerichtet: {duvod}</translation>
    </message>
    <message>
        <source>Přihlášení Claude Code selhalo. V Terminálu spusť `claude auth login` a potom v aplikaci klikni na Zjistit znovu.</source>
        <translation>Die Anmeldung von Claude Code ist fehlgeschlagen. Führe im Terminal `claude auth login` aus und klicke dann in der App auf Erneut suchen.</translation>
    </message>
    <message>
        <source>Připoj vlastní MCP službu přes zabezpečenou HTTPS adresu.</source>
        <translation>Verbinde einen eigenen MCP-Dienst über eine sichere HTTPS-Adresse.</translation>
    </message>
    <message>
        <source>Připojuji…</source>
        <translation>Verbinde…</translation>
    </message>
    <message>
        <source>Připojuji… ({cislo}. pokus)</source>
        <translation>Verbinde… ({cislo}. Versuch)</translation>
    </message>
    <message>
        <source>Připomínky</source>
        <translation>Erinnerungen</translation>
    </message>
    <message>
        <source>Připraven</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>Přístupový token — volitelný</source>
        <translation>Zugangstoken — optional</translation>
    </message>
    <message>
        <source>QR kód</source>
        <translation>QR-Code</translation>
    </message>
    <message>
        <source>QR kód se nepodařilo vykreslit.</source>
        <translation>Der QR-Code ließ sich nicht zeichnen.</translation>
    </message>
    <message>
        <source>Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aktuální aplikace Claude.</source>
        <translation>Die Sitzung ließ sich nicht öffnen. Prüfe, ob die aktuelle Claude-App installiert ist.</translation>
    </message>
    <message>
        <source>Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aplikace Codex.</source>
        <translation>Die Sitzung ließ sich nicht öffnen. Prüfe, ob die Codex-App installiert ist.</translation>
    </message>
    <message>
        <source>Relay</source>
        <translation>Relay</translation>
    </message>
    <message>
        <source>Relay neodpověděl.</source>
        <translation>Das Relay hat nicht geantwortet.</translation>
    </message>
    <message>
        <source>Relay neposlal výzvu.</source>
        <translation>Das Relay hat keine Aufforderung gesendet.</translation>
    </message>
    <message>
        <source>Relay odmítl požadavek ({stav}).</source>
        <translation>Das Relay hat die Anfrage abgelehnt ({stav}).</translation>
    </message>
    <message>
        <source>Server odmítl WebSocket (HTTP {stav}).</source>
        <translation>Der Server hat den WebSocket abgelehnt (HTTP {stav}).</translation>
    </message>
    <message>
        <source>Server odpověděl nesrozumitelně.</source>
        <translation>Die Antwort des Servers ist unverständlich.</translation>
    </message>
    <message>
        <source>Server se neozval včas.</source>
        <translation>Der Server hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>Server spojení odmítl. Nejspíš neběží, nebo má jiný port, než je v adrese.</source>
        <translation>Der Server hat die Verbindung abgelehnt. Wahrscheinlich läuft er nicht oder hat einen anderen Port als die Adresse.</translation>
    </message>
    <message>
        <source>Server ukončil spojení (kód {kod}).</source>
        <translation>Der Server hat die Verbindung beendet (Code {kod}).</translation>
    </message>
    <message>
        <source>Server spojení ukončil.</source>
        <translation>Der Server hat die Verbindung beendet.</translation>
    </message>
    <message>
        <source>Spojení s poštovním serverem selhalo: {potiz}</source>
        <translation>Die Verbindung zum Mailserver ist fehlgeschlagen: {potiz}</translation>
    </message>
    <message>
        <source>Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.</source>
        <translation>Der Server hat die Anmeldung abgelehnt. Prüfe die Adresse und das Passwort oder das App-Passwort.</translation>
    </message>
    <message>
        <source>E-mailová adresa není platná.</source>
        <translation>Die E-Mail-Adresse ist nicht gültig.</translation>
    </message>
    <message>
        <source>Spojení bylo zrušeno.</source>
        <translation>Die Verbindung wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Server se do 15 sekund nepřipojil.</source>
        <translation>Der Server hat sich nicht innerhalb von 15 Sekunden verbunden.</translation>
    </message>
    <message>
        <source>Server nepřijal data.</source>
        <translation>Der Server hat die Daten nicht angenommen.</translation>
    </message>
    <message>
        <source>Server neodpověděl.</source>
        <translation>Der Server hat nicht geantwortet.</translation>
    </message>
    <message>
        <source>Server odpověděl: {odpoved}</source>
        <translation>Der Server hat geantwortet: {odpoved}</translation>
    </message>
    <message>
        <source>Nesrozumitelná odpověď SMTP serveru.</source>
        <translation>Die Antwort des SMTP-Servers ist unverständlich.</translation>
    </message>
    <message>
        <source>SMTP server odpověděl: {odpoved}</source>
        <translation>Der SMTP-Server hat geantwortet: {odpoved}</translation>
    </message>
    <message>
        <source>K serveru {server} se nepodařilo připojit: {potiz}</source>
        <translation>Zum Server {server} konnte keine Verbindung hergestellt werden: {potiz}</translation>
    </message>
    <message>
        <source>Spojení nestíhá odesílat.</source>
        <translation>Die Verbindung kommt mit dem Senden nicht nach.</translation>
    </message>
    <message>
        <source>Seznam autorit, kterým tento počítač věří, nejde přečíst.</source>
        <translation>Die Liste der Zertifizierungsstellen, denen dieser Computer vertraut, ist nicht lesbar.</translation>
    </message>
    <message>
        <source>Skončilo chybou</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>Složka {cesta} neexistuje.</source>
        <translation>Den Ordner {cesta} gibt es nicht.</translation>
    </message>
    <message>
        <source>Složka {cesta} už není povolená.</source>
        <translation>Der Ordner {cesta} ist nicht mehr erlaubt.</translation>
    </message>
    <message>
        <source>Složku s daty „{slozka}“ nejde použít: {duvod}</source>
        <translation>Der Datenordner „{slozka}“ ist nicht verwendbar: {duvod}</translation>
    </message>
    <message>
        <source>Služba počítače se neozvala včas.</source>
        <translation>Der Dienst des Computers hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>Soubor je příliš velký.</source>
        <translation>Die Datei ist zu groß.</translation>
    </message>
    <message>
        <source>Soubor nebo složka neexistuje.</source>
        <translation>Die Datei oder der Ordner existiert nicht.</translation>
    </message>
    <message>
        <source>Soubor není program pro tento počítač.</source>
        <translation>Die Datei ist kein Programm für diesen Computer.</translation>
    </message>
    <message>
        <source>Soubor s nastavením byl poškozený; je odložený jako {soubor}</source>
        <translation>Die Datei mit den Einstellungen war beschädigt; sie liegt beiseite als {soubor}</translation>
    </message>
    <message>
        <source>Soubor s nastavením je poškozený a nejde odložit: {duvod}</source>
        <translation>Die Datei mit den Einstellungen ist beschädigt und lässt sich nicht beiseitelegen: {duvod}</translation>
    </message>
    <message>
        <source>Soubor s nastavením nejde přečíst: {duvod}</source>
        <translation>Die Datei mit den Einstellungen ist nicht lesbar: {duvod}</translation>
    </message>
    <message>
        <source>Soubory</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Souhlasí</source>
        <translation>Stimmt überein</translation>
    </message>
    <message>
        <source>Souhrny Morvex</source>
        <translation>Morvex-Zusammenfassungen</translation>
    </message>
    <message>
        <source>Spojení</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>Spojení bylo uzavřeno.</source>
        <translation>Die Verbindung wurde geschlossen.</translation>
    </message>
    <message>
        <source>Spojení je zavřené.</source>
        <translation>Die Verbindung ist geschlossen.</translation>
    </message>
    <message>
        <source>Spojení přerušeno — {duvod}</source>
        <translation>Verbindung unterbrochen — {duvod}</translation>
    </message>
    <message>
        <source>Spojení se přerušilo.</source>
        <translation>Die Verbindung ist abgebrochen.</translation>
    </message>
    <message>
        <source>Spouští příkazy v povolených složkách a umí spustit jakýkoli kód</source>
        <translation>Führt Befehle in erlaubten Ordnern aus und kann jeden Code ausführen</translation>
    </message>
    <message>
        <source>Spouštění po přihlášení se nepodařilo nastavit: {duvod}</source>
        <translation>Der Start nach der Anmeldung ließ sich nicht einstellen: {duvod}</translation>
    </message>
    <message>
        <source>Spouštět po přihlášení</source>
        <translation>Nach der Anmeldung starten</translation>
    </message>
    <message>
        <source>Spravovat</source>
        <translation>Verwalten</translation>
    </message>
    <message>
        <source>Spárovaný telefon</source>
        <translation>Gekoppeltes Telefon</translation>
    </message>
    <message>
        <source>Spárovat jiný telefon</source>
        <translation>Anderes Telefon koppeln</translation>
    </message>
    <message>
        <source>Stav se nepodařilo odeslat: {duvod}</source>
        <translation>Der Stand ließ sich nicht senden: {duvod}</translation>
    </message>
    <message>
        <source>Synchronizováno z iPhonu</source>
        <translation>Vom iPhone synchronisiert</translation>
    </message>
    <message>
        <source>Adresa relaye vede jen na tento počítač. Jiné zařízení se přes ni nepřipojí.</source>
        <translation>Die Adresse des Relays führt nur zu diesem Computer. Ein anderes Gerät kann sich darüber nicht verbinden.</translation>
    </message>
    <message>
        <source>Systém ohlásil chybu, kterou neznám.</source>
        <translation>Das System hat einen Fehler gemeldet, den ich nicht kenne.</translation>
    </message>
    <message>
        <source>Takovou cestu nejde použít.</source>
        <translation>Ein solcher Pfad ist nicht verwendbar.</translation>
    </message>
    <message>
        <source>Telefon</source>
        <translation>Telefon</translation>
    </message>
    <message>
        <source>Telefon a Mac mluví jinou verzí protokolu ({moje} proti {jeho}). Aktualizuj tu starší aplikaci.</source>
        <translation>Telefon und Mac sprechen verschiedene Versionen des Protokolls ({moje} gegen {jeho}). Aktualisiere die ältere App.</translation>
    </message>
    <message>
        <source>Telefon mezitím odešel. Pokud párování vzdal, nepřipojí se a je potřeba ho spárovat znovu.</source>
        <translation>Das Telefon ist inzwischen gegangen. Falls es die Kopplung aufgegeben hat, verbindet es sich nicht und muss neu gekoppelt werden.</translation>
    </message>
    <message>
        <source>Telefon není připojený</source>
        <translation>Das Telefon ist nicht verbunden</translation>
    </message>
    <message>
        <source>Telefon poslal nekompatibilní párovací zprávu: {duvod}</source>
        <translation>Das Telefon hat eine unverträgliche Kopplungsnachricht gesendet: {duvod}</translation>
    </message>
    <message>
        <source>Telefon se ozval. Shoduje se tohle číslo s tím na jeho obrazovce?</source>
        <translation>Das Telefon hat sich gemeldet. Ist diese Zahl dieselbe wie auf seinem Bildschirm?</translation>
    </message>
    <message>
        <source>Telefon spí ({minut} min)</source>
        <translation>Das Telefon schläft ({minut} min)</translation>
    </message>
    <message>
        <source>Telefon tenhle Mac přestane vidět. Aby se k němu zase dostal, budeš ho muset znovu spárovat.</source>
        <translation>Das Telefon sieht diesen Mac dann nicht mehr. Dafür musst du es erneut koppeln.</translation>
    </message>
    <message>
        <source>Tento systém nebo disk to neumí.</source>
        <translation>Dieses System oder dieser Datenträger kann das nicht.</translation>
    </message>
    <message>
        <source>Tento úkol ještě nemá relaci, ve které by šlo pokračovat.</source>
        <translation>Diese Aufgabe hat noch keine Sitzung, in der sie fortgesetzt werden könnte.</translation>
    </message>
    <message>
        <source>Terminál</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Text kódu je zkopírovaný.</source>
        <translation>Der Text des Codes ist kopiert.</translation>
    </message>
    <message>
        <source>To je celý disk: telefon se pak dostane ke všemu, k čemu se tu dostaneš ty.</source>
        <translation>Das ist die ganze Festplatte: Das Telefon kommt dann an alles heran, woran du hier kommst.</translation>
    </message>
    <message>
        <source>To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům.</source>
        <translation>Das ist dein persönlicher Ordner: Das Telefon kommt dann an alle deine Dateien heran.</translation>
    </message>
    <message>
        <source>Tohle potřebuje potvrzení: {co}</source>
        <translation>Das muss bestätigt werden: {co}</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message>
        <source>Token se ukládá pouze do Keychainu tohoto Macu.</source>
        <translation>Das Token wird nur im Schlüsselbund dieses Mac gespeichert.</translation>
    </message>
    <message>
        <source>Trezor odmítl mazání {ucet}: {duvod}</source>
        <translation>Der Tresor verweigert das Löschen von {ucet}: {duvod}</translation>
    </message>
    <message>
        <source>Trezor odmítl zápis {ucet}: {duvod}</source>
        <translation>Der Tresor verweigert das Schreiben von {ucet}: {duvod}</translation>
    </message>
    <message>
        <source>Trezor odmítl čtení {ucet}: {duvod}</source>
        <translation>Der Tresor verweigert das Lesen von {ucet}: {duvod}</translation>
    </message>
    <message>
        <source>Tuhle zprávu jsem už jednou zpracoval. Podruhé ji neprovádím.</source>
        <translation>Diese Nachricht habe ich schon verarbeitet. Ein zweites Mal führe ich sie nicht aus.</translation>
    </message>
    <message>
        <source>U složek označených níže je potřeba jednou obnovit přístup. Klikni na Přidat nebo obnovit složku a vyber je znovu.</source>
        <translation>Für die unten markierten Ordner muss der Zugriff einmal erneuert werden. Klicke auf Ordner hinzufügen oder erneuern und wähle sie noch einmal aus.</translation>
    </message>
    <message>
        <source>Ukončit Morvex</source>
        <translation>Morvex beenden</translation>
    </message>
    <message>
        <source>Uložená adresa relaye nedává smysl.</source>
        <translation>Die gespeicherte Adresse des Relay ergibt keinen Sinn.</translation>
    </message>
    <message>
        <source>Uložit</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Upraveno %1</source>
        <translation>Geändert %1</translation>
    </message>
    <message>
        <source>Upravit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Upravit vlastní aplikaci</source>
        <translation>Eigene App bearbeiten</translation>
    </message>
    <message>
        <source>Už běží jiný úkol: {nastroj}. Počkej, nebo ho zruš.</source>
        <translation>Es läuft schon eine andere Aufgabe: {nastroj}. Warte oder brich sie ab.</translation>
    </message>
    <message>
        <source>V Apple Mailu není nastavený žádný účet.</source>
        <translation>In Apple Mail ist kein Konto eingerichtet.</translation>
    </message>
    <message>
        <source>V Morvex není povolený žádný poštovní účet.</source>
        <translation>In Morvex ist kein Mail-Konto erlaubt.</translation>
    </message>
    <message>
        <source>V téhle složce leží tvoje domovská: telefon se pak dostane ke všem tvým souborům.</source>
        <translation>In diesem Ordner liegt dein persönlicher Ordner: Das Telefon kommt dann an alle deine Dateien heran.</translation>
    </message>
    <message>
        <source>Verze aplikace</source>
        <translation>Version der App</translation>
    </message>
    <message>
        <source>Verze protokolu</source>
        <translation>Version des Protokolls</translation>
    </message>
    <message>
        <source>Veřejný klíč protějšku není bezpečný.</source>
        <translation>Der öffentliche Schlüssel der Gegenseite ist nicht sicher.</translation>
    </message>
    <message>
        <source>Vlastní aplikace</source>
        <translation>Eigene Apps</translation>
    </message>
    <message>
        <source>Vlastní aplikace odmítla přístupový token.</source>
        <translation>Die eigene App hat das Zugriffstoken abgelehnt.</translation>
    </message>
    <message>
        <source>Vlastní aplikace vrátila HTTP {kod}.</source>
        <translation>Die eigene App antwortete mit HTTP {kod}.</translation>
    </message>
    <message>
        <source>Vlastní aplikace vrátila neplatnou odpověď.</source>
        <translation>Die eigene App gab eine ungültige Antwort.</translation>
    </message>
    <message>
        <source>Vyber v nastavení Morvex výchozí účet pro odesílání.</source>
        <translation>Wähle in den Einstellungen von Morvex das Standardkonto zum Senden.</translation>
    </message>
    <message>
        <source>Vyber složky, ve kterých smí Morvex pracovat.</source>
        <translation>Wähle die Ordner, in denen Morvex arbeiten darf.</translation>
    </message>
    <message>
        <source>Vyhledávání na webu</source>
        <translation>Websuche</translation>
    </message>
    <message>
        <source>Vyhrazené místo na disku je vyčerpané.</source>
        <translation>Das Kontingent auf dem Datenträger ist aufgebraucht.</translation>
    </message>
    <message>
        <source>Vymazat</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Vymazat historii</source>
        <translation>Verlauf löschen</translation>
    </message>
    <message>
        <source>Vymazat historii úkolů?</source>
        <translation>Verlauf der Aufgaben löschen?</translation>
    </message>
    <message>
        <source>Vyžaduje znovu povolit</source>
        <translation>Muss erneut erlaubt werden</translation>
    </message>
    <message>
        <source>Výchozí volba se synchronizuje z hlavního iPhonu.</source>
        <translation>Die Vorgabe wird vom Haupt-iPhone synchronisiert.</translation>
    </message>
    <message>
        <source>Zadání je pro program příliš dlouhé.</source>
        <translation>Die Eingabe ist für das Programm zu lang.</translation>
    </message>
    <message>
        <source>Zakládám pár…</source>
        <translation>Paar wird angelegt…</translation>
    </message>
    <message>
        <source>Zamítnout</source>
        <translation>Ablehnen</translation>
    </message>
    <message>
        <source>Zamítnuto.</source>
        <translation>Abgelehnt.</translation>
    </message>
    <message>
        <source>Zamítnuto: {duvod}</source>
        <translation>Abgelehnt: {duvod}</translation>
    </message>
    <message>
        <source>Zapni jen služby, které má Morvex na tomto Macu používat.</source>
        <translation>Schalte nur die Dienste ein, die Morvex auf diesem Mac verwenden soll.</translation>
    </message>
    <message>
        <source>Zastavit</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Zatím žádný telefon. Morvex for Mac nic nedělá, dokud se nespáruje.</source>
        <translation>Noch kein Telefon. Morvex for Mac tut nichts, bis es gekoppelt ist.</translation>
    </message>
    <message>
        <source>Zavřít</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Zařízení bylo odvoláno.</source>
        <translation>Das Gerät wurde widerrufen.</translation>
    </message>
    <message>
        <source>Zařízení není spárované. {duvod}</source>
        <translation>Das Gerät ist nicht gekoppelt. {duvod}</translation>
    </message>
    <message>
        <source>Zjistit znovu</source>
        <translation>Erneut suchen</translation>
    </message>
    <message>
        <source>Zjišťuji…</source>
        <translation>Wird gesucht…</translation>
    </message>
    <message>
        <source>Zkopírováno</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Zkusit hned</source>
        <translation>Jetzt versuchen</translation>
    </message>
    <message>
        <source>Zkusit znovu</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Změna se projeví od příštího hlasového rozhovoru a bezpečně se oznámí spárovanému iPhonu.</source>
        <translation>Die Änderung gilt ab dem nächsten Gespräch und wird dem gekoppelten iPhone sicher mitgeteilt.</translation>
    </message>
    <message>
        <source>Zobrazit QR kód</source>
        <translation>QR-Code zeigen</translation>
    </message>
    <message>
        <source>Zpráva chybí.</source>
        <translation>Die Nachricht fehlt.</translation>
    </message>
    <message>
        <source>Zpráva dorazila dřív, než bylo spojení zabezpečené. Zopakuj to.</source>
        <translation>Die Nachricht kam, bevor die Verbindung gesichert war. Wiederhole es.</translation>
    </message>
    <message>
        <source>Zpráva dorazila mimo dobu své platnosti. Zkontroluj hodiny na obou zařízeních.</source>
        <translation>Die Nachricht kam außerhalb ihrer Gültigkeit. Prüfe die Uhren beider Geräte.</translation>
    </message>
    <message>
        <source>Zpráva dorazila pozdě, po {vterin} vteřinách. Neprovedl jsem ji.</source>
        <translation>Die Nachricht kam zu spät, nach {vterin} Sekunden. Ich habe sie nicht ausgeführt.</translation>
    </message>
    <message>
        <source>Zpráva je na přenos příliš dlouhá.</source>
        <translation>Die Nachricht ist zu lang für die Übertragung.</translation>
    </message>
    <message>
        <source>Zpráva je na zašifrování moc dlouhá.</source>
        <translation>Die Nachricht ist zu lang zum Verschlüsseln.</translation>
    </message>
    <message>
        <source>Zpráva je příliš dlouhá.</source>
        <translation>Die Nachricht ist zu lang.</translation>
    </message>
    <message>
        <source>Zpráva má neznámou hodnotu „{hodnota}“.</source>
        <translation>Die Nachricht hat den unbekannten Wert „{hodnota}“.</translation>
    </message>
    <message>
        <source>Zpráva má neznámý druh „{druh}“.</source>
        <translation>Die Nachricht ist von der unbekannten Art „{druh}“.</translation>
    </message>
    <message>
        <source>Zpráva má nečitelnou hodnotu „{hodnota}“.</source>
        <translation>Der Wert „{hodnota}“ der Nachricht ist nicht lesbar.</translation>
    </message>
    <message>
        <source>Zpráva má příliš mnoho hodnot.</source>
        <translation>Die Nachricht hat zu viele Werte.</translation>
    </message>
    <message>
        <source>Zpráva má číslo mimo rozsah.</source>
        <translation>Die Zahl in der Nachricht liegt außerhalb des Bereichs.</translation>
    </message>
    <message>
        <source>Zpráva má špatný typ ({typ}).</source>
        <translation>Die Nachricht hat einen falschen Typ ({typ}).</translation>
    </message>
    <message>
        <source>Zpráva není platný JSON (bajt {bajt}).</source>
        <translation>Die Nachricht ist kein gültiges JSON (Byte {bajt}).</translation>
    </message>
    <message>
        <source>Zpráva není zašifrovaná pro tohle spojení, nebo ji někdo změnil.</source>
        <translation>Die Nachricht ist nicht für diese Verbindung verschlüsselt, oder jemand hat sie verändert.</translation>
    </message>
    <message>
        <source>Zpráva neprošla ověřením.</source>
        <translation>Die Nachricht hat die Prüfung nicht bestanden.</translation>
    </message>
    <message>
        <source>Zpráva se opakuje nebo dorazila mimo pořadí.</source>
        <translation>Die Nachricht wiederholt sich oder kam außer der Reihe.</translation>
    </message>
    <message>
        <source>Zprávu nejde ověřit: {duvod}</source>
        <translation>Die Nachricht lässt sich nicht prüfen: {duvod}</translation>
    </message>
    <message>
        <source>Zrušeno.</source>
        <translation>Abgebrochen.</translation>
    </message>
    <message>
        <source>Zrušit</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Zůstane vzhůru, dokud je v zásuvce</source>
        <translation>Bleibt wach, solange er am Netz hängt</translation>
    </message>
    <message>
        <source>iPhone zůstává hlavní zařízení</source>
        <translation>Das iPhone bleibt das Hauptgerät</translation>
    </message>
    <message>
        <source>kód {cislo}</source>
        <translation>Code {cislo}</translation>
    </message>
    <message>
        <source>macOS nepovolil ovládání aplikace Mail. Otevři Nastavení systému → Soukromí a zabezpečení → Automatizace a povol tam Morvex přístup k Mailu.</source>
        <translation>macOS hat die Steuerung von Mail nicht erlaubt. Öffne Systemeinstellungen → Datenschutz &amp; Sicherheit → Automation und erlaube Morvex dort den Zugriff auf Mail.</translation>
    </message>
    <message>
        <source>objekt</source>
        <translation>Objekt</translation>
    </message>
    <message>
        <source>pole</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>položka neexistuje</source>
        <translation>der Eintrag existiert nicht</translation>
    </message>
    <message>
        <source>položka už existuje</source>
        <translation>der Eintrag existiert bereits</translation>
    </message>
    <message>
        <source>položku nejde číst nebo zapsat</source>
        <translation>der Eintrag lässt sich nicht lesen oder schreiben</translation>
    </message>
    <message>
        <source>pravdivostní hodnota</source>
        <translation>Wahrheitswert</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>trezor je zamčený</source>
        <translation>der Tresor ist gesperrt</translation>
    </message>
    <message>
        <source>trezor není dostupný</source>
        <translation>der Tresor ist nicht erreichbar</translation>
    </message>
    <message>
        <source>uživatel odemčení zrušil</source>
        <translation>das Entsperren wurde abgebrochen</translation>
    </message>
    <message>
        <source>z iPhonu · E2EE</source>
        <translation>vom iPhone · E2EE</translation>
    </message>
    <message>
        <source>Úkoly zadané Codexu nebo Claude přes telefon se objeví tady. Pak v nich můžeš pokračovat jedním kliknutím.</source>
        <translation>Aufgaben, die Codex oder Claude per Telefon erhalten, erscheinen hier. Dann kannst du mit einem Klick weiterarbeiten.</translation>
    </message>
    <message>
        <source>Úkoly zůstanou v Claude a Codexu, ale Morvex už k nim nebude nabízet tlačítka pro pokračování.</source>
        <translation>Die Aufgaben bleiben in Claude und Codex, aber Morvex bietet für sie keine Knöpfe zum Fortsetzen mehr an.</translation>
    </message>
    <message>
        <source>Čeká na potvrzení: %1</source>
        <translation>Wartet auf Bestätigung: %1</translation>
    </message>
    <message>
        <source>Čekám na OpenAI klíč z iPhonu</source>
        <translation>Warte auf den OpenAI-Schlüssel vom iPhone</translation>
    </message>
    <message>
        <source>Čekám na klíče tohoto počítače. Pokud se klíčenka ptá na heslo, odemkni ji.</source>
        <translation>Warte auf die Schlüssel dieses Computers. Falls der Schlüsselbund nach dem Passwort fragt, entsperre ihn.</translation>
    </message>
    <message>
        <source>Čekám na klíče tohoto počítače…</source>
        <translation>Warte auf die Schlüssel dieses Computers…</translation>
    </message>
    <message>
        <source>Část cesty není složka.</source>
        <translation>Ein Teil des Pfads ist kein Ordner.</translation>
    </message>
    <message>
        <source>Čísla se neshodovala. Párování jsem zrušil a nic neuložil. Zkus to znovu; pokud se to bude opakovat, někdo poslouchá.</source>
        <translation>Die Zahlen stimmten nicht überein. Ich habe die Kopplung abgebrochen und nichts gespeichert. Versuche es erneut; wiederholt es sich, hört jemand mit.</translation>
    </message>
    <message>
        <source>číslo</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>Šifrované spojení se serverem se nepodařilo navázat. Pokud server na tomto portu nešifruje, jeho adresa začíná http://, ne https://.</source>
        <translation>Mit dem Server ließ sich keine verschlüsselte Verbindung aushandeln. Wenn der Server auf diesem Port nicht verschlüsselt, beginnt seine Adresse mit http://, nicht mit https://.</translation>
    </message>
    <message>
        <source>Žádná. Bez povolené složky nemá Codex ani Claude Code kde pracovat, takže se telefonu vůbec nenabídnou.</source>
        <translation>Keiner. Ohne erlaubten Ordner haben Codex und Claude Code keinen Platz zum Arbeiten und werden dem Telefon gar nicht angeboten.</translation>
    </message>
    <message>
        <source>Žádné vlastní aplikace</source>
        <translation>Keine eigenen Apps</translation>
    </message>
    <message>
        <source>Mac není připojený</source>
        <translation>Der Mac ist nicht verbunden</translation>
    </message>
    <message>
        <source>Mac spí ({minut} min)</source>
        <translation>Der Mac schläft ({minut} min)</translation>
    </message>
    <message>
        <source>Vypnuto</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Nainstaluj: npm i -g @anthropic-ai/claude-code</source>
        <translation>Installiere es: npm i -g @anthropic-ai/claude-code</translation>
    </message>
    <message>
        <source>Zjišťuji nástroje…</source>
        <translation>Werkzeuge werden gesucht…</translation>
    </message>
    <message>
        <source>Nepřipojeno: {duvod}</source>
        <translation>Nicht verbunden: {duvod}</translation>
    </message>
    <message>
        <source>Co je vidět z nástrojů aplikací, se nepodařilo uložit: {duvod}</source>
        <translation>Was von den Werkzeugen der Apps zu sehen war, konnte nicht gespeichert werden: {duvod}</translation>
    </message>
    <message>
        <source>Změny nástrojů</source>
        <translation>Änderungen der Werkzeuge</translation>
    </message>
    <message>
        <source>Změny nástrojů: %1</source>
        <translation>Änderungen der Werkzeuge: %1</translation>
    </message>
    <message>
        <source>Změny nástrojů nejdřív schválit</source>
        <translation>Änderungen der Werkzeuge erst genehmigen</translation>
    </message>
    <message>
        <source>Změněný nebo nový nástroj pak asistentka nedostane, dokud se na něj nepodíváš.</source>
        <translation>Die Assistentin bekommt ein geändertes oder neues Werkzeug dann erst, wenn du es angesehen hast.</translation>
    </message>
    <message>
        <source>Od posledního pohledu se nic nezměnilo.</source>
        <translation>Seit deinem letzten Blick hat sich nichts geändert.</translation>
    </message>
    <message>
        <source>Nový nástroj: %1</source>
        <translation>Neues Werkzeug: %1</translation>
    </message>
    <message>
        <source>Změněný nástroj: %1</source>
        <translation>Geändertes Werkzeug: %1</translation>
    </message>
    <message>
        <source>Bylo: %1</source>
        <translation>Es war: %1</translation>
    </message>
    <message>
        <source>Je: %1</source>
        <translation>Es ist: %1</translation>
    </message>
    <message>
        <source>Mezitím bylo: %1</source>
        <translation>Zwischendurch war es: %1</translation>
    </message>
    <message>
        <source>Beru na vědomí</source>
        <translation>Gesehen</translation>
    </message>
    <message>
        <source>Změněné nebo nové nástroje: %1</source>
        <translation>Geänderte oder neue Werkzeuge: %1</translation>
    </message>
    <message>
        <source>Aktuální veřejné informace se zdroji</source>
        <translation>Aktuelle öffentliche Informationen mit Quellen</translation>
    </message>
    <message>
        <source>Webové hledání selhalo (HTTP {stav}).</source>
        <translation>Die Websuche ist fehlgeschlagen (HTTP {stav}).</translation>
    </message>
    <message>
        <source>Webové hledání vrátilo nečitelnou odpověď.</source>
        <translation>Die Websuche lieferte eine unlesbare Antwort.</translation>
    </message>
    <message>
        <source>Chybí OpenAI API klíč.</source>
        <translation>Der OpenAI-API-Schlüssel fehlt.</translation>
    </message>
    <message>
        <source>Chybí vyhledávací dotaz.</source>
        <translation>Die Suchanfrage fehlt.</translation>
    </message>
    <message numerus="yes">
        <source>Připojeno · {pocet} nástrojů · {doba} ms</source>
        <translation>
            <numerusform>Verbunden · {pocet} Werkzeug · {doba} ms</numerusform>
            <numerusform>Verbunden · {pocet} Werkzeuge · {doba} ms</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Připojeno · {pocet} nástrojů · {ceka} čeká na schválení · {doba} ms</source>
        <translation>
            <numerusform>Verbunden · {pocet} Werkzeug · {ceka} warten auf Genehmigung · {doba} ms</numerusform>
            <numerusform>Verbunden · {pocet} Werkzeuge · {ceka} warten auf Genehmigung · {doba} ms</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{stav} · {pocet} nástrojů se nedá použít nebo se nevešlo</source>
        <translation>
            <numerusform>{stav} · {pocet} Werkzeug ist nicht brauchbar oder passte nicht hinein</numerusform>
            <numerusform>{stav} · {pocet} Werkzeuge sind nicht brauchbar oder passten nicht hinein</numerusform>
        </translation>
    </message>
    <message>
        <source>Chybí heslo k poštovnímu účtu.</source>
        <translation>Das Passwort zum E-Mail-Konto fehlt.</translation>
    </message>
    <message>
        <source>Není nastavený žádný přímý SMTP/IMAP účet.</source>
        <translation>Es ist kein direktes SMTP/IMAP-Konto eingerichtet.</translation>
    </message>
    <message>
        <source>Vyber výchozí SMTP účet nebo řekni jeho název.</source>
        <translation>Wähle ein SMTP-Standardkonto oder nenne seinen Namen.</translation>
    </message>
    <message>
        <source>Přímé SMTP neumí ukládat koncepty. Pro koncept použij účet v Apple Mailu.</source>
        <translation>Direktes SMTP kann keine Entwürfe sichern. Nimm für einen Entwurf ein Konto in Apple Mail.</translation>
    </message>
    <message>
        <source>SMTP účet „{nazev}“ není připojený.</source>
        <translation>Das SMTP-Konto „{nazev}“ ist nicht verbunden.</translation>
    </message>
    <message>
        <source>Zprávu s tímhle číslem jsem nenašel.</source>
        <translation>Eine Nachricht mit dieser Nummer habe ich nicht gefunden.</translation>
    </message>
    <message>
        <source>E-mail byl odeslán z účtu {ucet}.</source>
        <translation>Die E-Mail wurde vom Konto {ucet} gesendet.</translation>
    </message>
    <message>
        <source>Ověřuji…</source>
        <translation>Wird geprüft …</translation>
    </message>
    <message>
        <source>Ověřeno</source>
        <translation>Geprüft</translation>
    </message>
    <message>
        <source>Chybí adresa nebo server.</source>
        <translation>Adresse oder Server fehlt.</translation>
    </message>
    <message>
        <source>Není vybrán</source>
        <translation>Nicht gewählt</translation>
    </message>
    <message numerus="yes">
        <source>{pocet} účtů vybráno</source>
        <translation>
            <numerusform>{pocet} Konto ausgewählt</numerusform>
            <numerusform>{pocet} Konten ausgewählt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} účtů</source>
        <translation>
            <numerusform>{pocet} Konto</numerusform>
            <numerusform>{pocet} Konten</numerusform>
        </translation>
    </message>
    <message>
        <source>SMTP / IMAP</source>
        <translation>SMTP / IMAP</translation>
    </message>
    <message>
        <source>Přidat účet</source>
        <translation>Konto hinzufügen</translation>
    </message>
    <message>
        <source>Přímé poštovní účty fungují nezávisle na Apple Mailu. Hesla zůstávají v Keychainu tohoto Macu.</source>
        <translation>Direkte E-Mail-Konten arbeiten unabhängig von Apple Mail. Passwörter bleiben im Schlüsselbund dieses Mac.</translation>
    </message>
    <message>
        <source>Zatím není připojený žádný SMTP účet.</source>
        <translation>Noch ist kein SMTP-Konto verbunden.</translation>
    </message>
    <message>
        <source>Výchozí účet pro odesílání</source>
        <translation>Standardkonto zum Senden</translation>
    </message>
    <message>
        <source>Ověřit</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Nastavit jako výchozí</source>
        <translation>Als Standard festlegen</translation>
    </message>
    <message>
        <source>Upravit SMTP účet</source>
        <translation>SMTP-Konto bearbeiten</translation>
    </message>
    <message>
        <source>Přidat SMTP účet</source>
        <translation>SMTP-Konto hinzufügen</translation>
    </message>
    <message>
        <source>Odstranit účet</source>
        <translation>Konto entfernen</translation>
    </message>
    <message>
        <source>Uložit a ověřit</source>
        <translation>Sichern und prüfen</translation>
    </message>
    <message>
        <source>Stejné údaje jako v iPhone aplikaci. IMAP používá port 993 a SMTP port 465 se šifrováním TLS.</source>
        <translation>Dieselben Angaben wie in der iPhone-App. IMAP nutzt Port 993 und SMTP Port 465 mit TLS-Verschlüsselung.</translation>
    </message>
    <message>
        <source>Název účtu</source>
        <translation>Name des Kontos</translation>
    </message>
    <message>
        <source>E-mailová adresa</source>
        <translation>E-Mail-Adresse</translation>
    </message>
    <message>
        <source>Jméno odesílatele</source>
        <translation>Name des Absenders</translation>
    </message>
    <message>
        <source>IMAP server</source>
        <translation>IMAP-Server</translation>
    </message>
    <message>
        <source>SMTP server</source>
        <translation>SMTP-Server</translation>
    </message>
    <message>
        <source>Heslo nebo heslo pro aplikaci</source>
        <translation>Passwort oder App-Passwort</translation>
    </message>
    <message>
        <source>Služby, které programům nedovolí heslo (Outlook, Microsoft 365), takhle připojit nejde.</source>
        <translation>Dienste, die Programmen kein Passwort erlauben (Outlook, Microsoft 365), lassen sich so nicht verbinden.</translation>
    </message>
    <message>
        <source>Morvex zde vidí jen účty přidané přímo do Apple Mailu.</source>
        <translation>Morvex sieht hier nur Konten, die direkt in Apple Mail angelegt sind.</translation>
    </message>
    <message>
        <source>Odstranit účet „%1“?</source>
        <translation>Konto „%1“ entfernen?</translation>
    </message>
    <message>
        <source>Odstraní se i jeho heslo. Pošta na serveru zůstane.</source>
        <translation>Sein Passwort wird mit entfernt. Die Post auf dem Server bleibt.</translation>
    </message>
    <message>
        <source>Vybrat</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>{stav}. Na místo upozorní zařízení, která seznam sdílejí, tento počítač ne.</source>
        <translation>{stav}. An Orten erinnern Geräte, die die Liste teilen, dieser Computer nicht.</translation>
    </message>
    <message>
        <source>Vybrat kalendáře</source>
        <translation>Kalender auswählen</translation>
    </message>
    <message>
        <source>Morvex uvidí pouze označené kalendáře.</source>
        <translation>Morvex sieht nur die ausgewählten Kalender.</translation>
    </message>
    <message>
        <source>Jen pro čtení</source>
        <translation>Nur lesbar</translation>
    </message>
    <message>
        <source>Výchozí pro nové události</source>
        <translation>Standard für neue Ereignisse</translation>
    </message>
    <message>
        <source>Automaticky</source>
        <translation>Automatisch</translation>
    </message>
    <message numerus="yes">
        <source>{pocet} kalendářů vybráno</source>
        <translation>
            <numerusform>{pocet} Kalender ausgewählt</numerusform>
            <numerusform>{pocet} Kalender ausgewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>Tahle verze to ještě neumí.</source>
        <translation>Das beherrscht diese Version noch nicht.</translation>
    </message>
</context>
</TS>
