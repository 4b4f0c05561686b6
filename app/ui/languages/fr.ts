<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="cs">
<context>
    <name>Morvex</name>
    <message numerus="yes">
        <source>{pocet} povolených složek</source>
        <translation>
            <numerusform>{pocet} dossier autorisé</numerusform>
            <numerusform>{pocet} dossiers autorisés</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} připojeno</source>
        <translation>
            <numerusform>{pocet} connectée</numerusform>
            <numerusform>{pocet} connectées</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} nástrojů</source>
        <translation>
            <numerusform>{pocet} outil</numerusform>
            <numerusform>{pocet} outils</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} synchronizováno</source>
        <translation>
            <numerusform>{pocet} synchronisée</numerusform>
            <numerusform>{pocet} synchronisées</numerusform>
        </translation>
    </message>
    <message>
        <source>{nastroj} skončil chybou: {zprava}</source>
        <translation>{nastroj} s’est terminé par une erreur : {zprava}</translation>
    </message>
    <message>
        <source>Adresa</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Adresa relaye nedává smysl.</source>
        <translation>L’adresse du relais n’a pas de sens.</translation>
    </message>
    <message>
        <source>Adresa relaye začíná https:// nebo http://. Napiš „{adresa}“.</source>
        <translation>L’adresse d’un relais commence par https:// ou http://. Écris « {adresa} ».</translation>
    </message>
    <message>
        <source>Adresa serveru není platná.</source>
        <translation>L’adresse du serveur n’est pas valable.</translation>
    </message>
    <message>
        <source>Adresa vlastní aplikace musí být platné HTTPS.</source>
        <translation>L’adresse de l’app personnelle doit être en HTTPS valable.</translation>
    </message>
    <message>
        <source>Apple Mail existuje jen v systému macOS.</source>
        <translation>Apple Mail n’existe que sous macOS.</translation>
    </message>
    <message>
        <source>Apple Mail neposkytl podporované automatizační rozhraní.</source>
        <translation>Apple Mail n’offre pas d’interface d’automatisation prise en charge.</translation>
    </message>
    <message>
        <source>Binárka nalezena, ale `--version` neodpovědělo. Zkontroluj instalaci.</source>
        <translation>Le programme a été trouvé, mais `--version` n’a pas répondu. Vérifie l’installation.</translation>
    </message>
    <message>
        <source>Binárku „{binarka}“ jsem nenašel (prohledáno {pocet} adresářů). {napoveda}</source>
        <translation>Le programme « {binarka} » est introuvable ({pocet} dossiers parcourus). {napoveda}</translation>
    </message>
    <message>
        <source>Byl požadován nástroj {nastroj}, který tento Mac neumí.</source>
        <translation>L’outil {nastroj} a été demandé, que ce Mac n’a pas.</translation>
    </message>
    <message>
        <source>Běží: %1</source>
        <translation>En cours : %1</translation>
    </message>
    <message>
        <source>Certifikát serveru je vydaný pro jinou adresu. Zkontroluj adresu serveru.</source>
        <translation>Le certificat du serveur est émis pour une autre adresse. Vérifie l’adresse du serveur.</translation>
    </message>
    <message>
        <source>Certifikát serveru ještě neplatí. Zkontroluj hodiny počítače.</source>
        <translation>Le certificat du serveur n’est pas encore valable. Vérifie l’horloge de l’ordinateur.</translation>
    </message>
    <message>
        <source>Certifikát serveru není v pořádku.</source>
        <translation>Le certificat du serveur n’est pas en règle.</translation>
    </message>
    <message>
        <source>Certifikát serveru nevydala autorita, které tento počítač věří. Certifikát vlastní autority ulož s příponou .crt do /usr/local/share/ca-certificates a spusť sudo update-ca-certificates.</source>
        <translation>Le certificat du serveur ne vient pas d’une autorité à laquelle cet ordinateur fait confiance. Enregistre le certificat de ta propre autorité avec l’extension .crt dans /usr/local/share/ca-certificates et lance sudo update-ca-certificates.</translation>
    </message>
    <message>
        <source>Cesta {cesta} leží mimo povolené složky. Nesahám na ni.</source>
        <translation>Le chemin {cesta} est hors des dossiers autorisés. Je n’y touche pas.</translation>
    </message>
    <message>
        <source>Cesta vede mimo svou složku nebo na jiný disk.</source>
        <translation>Le chemin sort de son dossier ou mène à un autre disque.</translation>
    </message>
    <message>
        <source>Cesta vede přes odkaz, který nejde sledovat.</source>
        <translation>Le chemin passe par un lien qui ne peut pas être suivi.</translation>
    </message>
    <message>
        <source>Chybí k tomu oprávnění.</source>
        <translation>L’autorisation nécessaire manque.</translation>
    </message>
    <message>
        <source>Chybí název nebo platný čas události.</source>
        <translation>Il manque le nom ou une heure valable de l’événement.</translation>
    </message>
    <message>
        <source>Claude Code je nainstalovaný, ale přihlášení není platné nebo kontrola neodpověděla. V Terminálu spusť `claude auth login` a potom zde klikni na Zjistit znovu.</source>
        <translation>Claude Code est installé, mais la connexion n’est pas valable ou le contrôle n’a pas répondu. Lance `claude auth login` dans un terminal, puis clique ici sur Rechercher à nouveau.</translation>
    </message>
    <message>
        <source>Claude Code skončil chybou.</source>
        <translation>Claude Code s’est terminé par une erreur.</translation>
    </message>
    <message>
        <source>Codex skončil chybou.</source>
        <translation>Codex s’est terminé par une erreur.</translation>
    </message>
    <message>
        <source>Další pokus za {vterin} s</source>
        <translation>Prochain essai dans {vterin} s</translation>
    </message>
    <message>
        <source>Disk je jen pro čtení.</source>
        <translation>Le disque est en lecture seule.</translation>
    </message>
    <message>
        <source>Disk nebo jiné zařízení selhalo.</source>
        <translation>Le disque ou un autre appareil est en panne.</translation>
    </message>
    <message>
        <source>Doplň název vlastní aplikace.</source>
        <translation>Donne un nom à l’app personnelle.</translation>
    </message>
    <message>
        <source>Dostupnost</source>
        <translation>Disponibilité</translation>
    </message>
    <message>
        <source>Historii úkolů se nepodařilo načíst: {duvod}</source>
        <translation>L’historique des tâches n’a pas pu être lu : {duvod}</translation>
    </message>
    <message>
        <source>Historii úkolů se nepodařilo uložit: {duvod}</source>
        <translation>L’historique des tâches n’a pas pu être enregistré : {duvod}</translation>
    </message>
    <message>
        <source>Hlas na Macu</source>
        <translation>Voix sur le Mac</translation>
    </message>
    <message>
        <source>Hlasový rozhovor tahle verze ještě neumí.</source>
        <translation>Cette version ne sait pas encore tenir une conversation vocale.</translation>
    </message>
    <message>
        <source>Hlavička požadavku je příliš dlouhá.</source>
        <translation>L’en-tête de la requête est trop long.</translation>
    </message>
    <message>
        <source>Hlavička požadavku má neplatné znaky.</source>
        <translation>L’en-tête de la requête contient des caractères non valides.</translation>
    </message>
    <message>
        <source>Hledání místa selhalo.</source>
        <translation>La recherche du lieu a échoué.</translation>
    </message>
    <message>
        <source>Hotovo</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Identita zprávy nebo požadavku obsahuje svislou čáru.</source>
        <translation>L’identité du message ou de la demande contient une barre verticale.</translation>
    </message>
    <message>
        <source>Identifikátor</source>
        <translation>Identifiant</translation>
    </message>
    <message>
        <source>Integrace</source>
        <translation>Intégrations</translation>
    </message>
    <message>
        <source>Invalid number of keys found, expected one.</source>
        <translation>Le message devrait avoir exactement un cas.</translation>
    </message>
    <message>
        <source>Jazyk aplikace a asistentky</source>
        <translation>Langue de l’app et de l’assistante</translation>
    </message>
    <message>
        <source>Jednorázové číslo zprávy má špatnou délku.</source>
        <translation>Le nonce du message a une longueur incorrecte.</translation>
    </message>
    <message>
        <source>Jméno nebo cesta je příliš dlouhá.</source>
        <translation>Le nom ou le chemin est trop long.</translation>
    </message>
    <message>
        <source>Jméno serveru síť nezná. Zkontroluj adresu a připojení k síti.</source>
        <translation>Le réseau ne connaît pas le nom du serveur. Vérifie l’adresse et la connexion au réseau.</translation>
    </message>
    <message>
        <source>Jméno už je obsazené.</source>
        <translation>Ce nom est déjà pris.</translation>
    </message>
    <message>
        <source>K serveru nevede cesta. Zkontroluj připojení k síti.</source>
        <translation>Aucun chemin ne mène au serveur. Vérifie la connexion au réseau.</translation>
    </message>
    <message>
        <source>Kalendář</source>
        <translation>Calendrier</translation>
    </message>
    <message>
        <source>Kalendář je povolený pouze pro zápis</source>
        <translation>Le calendrier n’est autorisé qu’en écriture</translation>
    </message>
    <message>
        <source>Kalendář je připojený</source>
        <translation>Le calendrier est connecté</translation>
    </message>
    <message>
        <source>Kalendář čeká na povolení</source>
        <translation>Le calendrier attend l’autorisation</translation>
    </message>
    <message>
        <source>Když se čísla liší, nepotvrzuj. Znamená to, že mezi telefonem a Macem někdo je.</source>
        <translation>Si les nombres diffèrent, ne confirme pas. Cela veut dire que quelqu’un se trouve entre le téléphone et le Mac.</translation>
    </message>
    <message>
        <source>Keychain error {stav}</source>
        <translation>Erreur du trousseau {stav}</translation>
    </message>
    <message>
        <source>Kliknutím zkopíruješ text kódu.</source>
        <translation>Un clic copie le texte du code.</translation>
    </message>
    <message>
        <source>Klávesová zkratka pro hlas</source>
        <translation>Raccourci clavier pour la voix</translation>
    </message>
    <message>
        <source>Klíč má mít {ocekavano} bajtů, má jich {dostal}.</source>
        <translation>La clé doit avoir {ocekavano} octets, elle en a {dostal}.</translation>
    </message>
    <message>
        <source>Klíč pro spojení nejde odvodit: {duvod}</source>
        <translation>La clé de la connexion ne peut pas être dérivée : {duvod}</translation>
    </message>
    <message>
        <source>Klíč telefonu nejde použít: {duvod}</source>
        <translation>La clé du téléphone est inutilisable : {duvod}</translation>
    </message>
    <message>
        <source>Klíče leží v souborech, které smí číst jen tvůj účet, protože tu není klíčenka.</source>
        <translation>Les clés se trouvent dans des fichiers que seul ton compte peut lire, car il n’y a pas de trousseau ici.</translation>
    </message>
    <message>
        <source>Klíčenka zůstala zamčená.</source>
        <translation>Le trousseau est resté verrouillé.</translation>
    </message>
    <message>
        <source>Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí.</source>
        <translation>Le trousseau est resté verrouillé. Il contient les clés de cet ordinateur ; sans elles, le téléphone ne peut pas se connecter.</translation>
    </message>
    <message>
        <source>Kontakty</source>
        <translation>Contacts</translation>
    </message>
    <message>
        <source>Kontakty jsou připojené</source>
        <translation>Les contacts sont connectés</translation>
    </message>
    <message>
        <source>Kontakty čekají na povolení</source>
        <translation>Les contacts attendent l’autorisation</translation>
    </message>
    <message>
        <source>Kopírovat</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Kryptografická knihovna selhala.</source>
        <translation>La bibliothèque cryptographique a échoué.</translation>
    </message>
    <message>
        <source>Kód platí do %1. Po vypršení si nech zobrazit nový — krátká platnost je záměr.</source>
        <translation>Le code est valable jusqu’à %1. Ensuite, demande-en un nouveau — la courte validité est voulue.</translation>
    </message>
    <message>
        <source>Mac není dostupný.</source>
        <translation>Le Mac n’est pas disponible.</translation>
    </message>
    <message>
        <source>Mac právě pracuje: {cim}.</source>
        <translation>Le Mac est occupé : {cim}.</translation>
    </message>
    <message>
        <source>Mac spí</source>
        <translation>Le Mac est en veille</translation>
    </message>
    <message>
        <source>Mail neodpověděl včas. Zkus menší počet zpráv.</source>
        <translation>Mail n’a pas répondu à temps. Essaie avec moins de messages.</translation>
    </message>
    <message>
        <source>Mail operaci odmítl.</source>
        <translation>Mail a refusé l’opération.</translation>
    </message>
    <message>
        <source>Mail vrátil něco, čemu nerozumím.</source>
        <translation>Mail a renvoyé quelque chose que je ne comprends pas.</translation>
    </message>
    <message>
        <source>Mluvit bez držení</source>
        <translation>Parler mains libres</translation>
    </message>
    <message>
        <source>Morvex běží bez systémového sandboxu, protože pouští tvoje vlastní programy a pracuje v tvých složkách. Přístup k souborům hlídá seznam povolených složek.</source>
        <translation>Morvex fonctionne sans le bac à sable du système, car il lance tes propres programmes et travaille dans tes dossiers. L’accès aux fichiers est gardé par la liste des dossiers autorisés.</translation>
    </message>
    <message>
        <source>Morvex nemá plný přístup ke kalendářům na tomto Macu. Povol ho v okně Morvex nebo v Nastavení systému → Soukromí a zabezpečení → Kalendáře.</source>
        <translation>Morvex n’a pas l’accès complet aux calendriers de ce Mac. Autorise-le dans la fenêtre de Morvex ou dans Réglages Système → Confidentialité et sécurité → Calendriers.</translation>
    </message>
    <message>
        <source>Morvex nemá přístup k připomínkám tohoto Macu.</source>
        <translation>Morvex n’a pas accès aux rappels de ce Mac.</translation>
    </message>
    <message>
        <source>Morvex nemá přístup ke kontaktům tohoto Macu.</source>
        <translation>Morvex n’a pas accès aux contacts de ce Mac.</translation>
    </message>
    <message>
        <source>Místo pro polohovou připomínku se nepodařilo najít.</source>
        <translation>Le lieu du rappel géolocalisé est introuvable.</translation>
    </message>
    <message>
        <source>Na Macu není dostupný seznam připomínek pro zápis.</source>
        <translation>Aucune liste de rappels modifiable n’est disponible sur le Mac.</translation>
    </message>
    <message>
        <source>Na Macu není kalendář, do kterého lze zapisovat.</source>
        <translation>Il n’y a sur le Mac aucun calendrier modifiable.</translation>
    </message>
    <message>
        <source>Na baterii Mac usne bez ohledu na tohle nastavení. Bránit spánku bez napájení by ti vybilo notebook v tašce.</source>
        <translation>Sur batterie, le Mac s’endort quel que soit ce réglage. Empêcher la veille sans secteur viderait le portable dans ton sac.</translation>
    </message>
    <message>
        <source>Na baterii usne — držení vzhůru platí jen při napájení</source>
        <translation>S’endort sur batterie — il ne reste éveillé que sur secteur</translation>
    </message>
    <message>
        <source>Poštovní účet „{nazev}“ není v Morvex povolený.</source>
        <translation>Le compte de messagerie « {nazev} » n’est pas autorisé dans Morvex.</translation>
    </message>
    <message>
        <source>Připomínku jsem nenašel.</source>
        <translation>Je n’ai pas trouvé le rappel.</translation>
    </message>
    <message>
        <source>Připomínky jsou povolené pouze pro zápis</source>
        <translation>Les rappels ne sont autorisés qu’en écriture</translation>
    </message>
    <message>
        <source>Připomínky jsou připojené</source>
        <translation>Les rappels sont connectés</translation>
    </message>
    <message>
        <source>Připomínky čekají na povolení</source>
        <translation>Les rappels attendent l’autorisation</translation>
    </message>
    <message>
        <source>Přístup k připomínkám byl zamítnut</source>
        <translation>L’accès aux rappels a été refusé</translation>
    </message>
    <message>
        <source>Přístup k připomínkám je systémem omezený</source>
        <translation>L’accès aux rappels est restreint par le système</translation>
    </message>
    <message>
        <source>Přístup ke kalendáři byl zamítnut</source>
        <translation>L’accès au calendrier a été refusé</translation>
    </message>
    <message>
        <source>Přístup ke kalendáři je systémem omezený</source>
        <translation>L’accès au calendrier est restreint par le système</translation>
    </message>
    <message>
        <source>Přístup ke kontaktům byl zamítnut</source>
        <translation>L’accès aux contacts a été refusé</translation>
    </message>
    <message>
        <source>Přístup ke kontaktům je systémem omezený</source>
        <translation>L’accès aux contacts est restreint par le système</translation>
    </message>
    <message>
        <source>Soubor s ním při startu nešel přečíst. Ukonči Morvex a spusť ho znovu.</source>
        <translation>Le fichier n’a pas pu être lu au démarrage. Quitte Morvex et relance-le.</translation>
    </message>
    <message>
        <source>Stav kalendáře není známý</source>
        <translation>L’état du calendrier n’est pas connu</translation>
    </message>
    <message>
        <source>Stav kontaktů není známý</source>
        <translation>L’état des contacts n’est pas connu</translation>
    </message>
    <message>
        <source>Stav připomínek není známý</source>
        <translation>L’état des rappels n’est pas connu</translation>
    </message>
    <message>
        <source>Systémová služba neodpověděla včas.</source>
        <translation>Le service système n’a pas répondu à temps.</translation>
    </message>
    <message>
        <source>Tento kalendář není v Morvex povolený.</source>
        <translation>Ce calendrier n’est pas autorisé dans Morvex.</translation>
    </message>
    <message>
        <source>Tento počítač nemá službu kalendářů, připomínek a kontaktů.</source>
        <translation>Cet ordinateur n’a pas de service de calendriers, de rappels et de contacts.</translation>
    </message>
    <message>
        <source>Událost už v kalendáři nemohu najít.</source>
        <translation>Je ne trouve plus l’événement dans le calendrier.</translation>
    </message>
    <message>
        <source>Vybraný kalendář je pouze pro čtení.</source>
        <translation>Le calendrier choisi est en lecture seule.</translation>
    </message>
    <message>
        <source>Zrušené párování se nepodařilo smazat: {duvod}</source>
        <translation>L’association annulée n’a pas pu être supprimée : {duvod}</translation>
    </message>
    <message>
        <source>Odpojení telefonu se nepodařilo uložit: {duvod}</source>
        <translation>La dissociation du téléphone n’a pas pu être enregistrée : {duvod}</translation>
    </message>
    <message>
        <source>Na disku není místo.</source>
        <translation>Il n’y a plus de place sur le disque.</translation>
    </message>
    <message>
        <source>Na tomto počítači taková služba neběží.</source>
        <translation>Aucun service de ce genre ne tourne sur cet ordinateur.</translation>
    </message>
    <message>
        <source>Na této cestě je složka.</source>
        <translation>Ce chemin mène à un dossier.</translation>
    </message>
    <message>
        <source>Nahrát vlastní zkratku</source>
        <translation>Enregistrer un raccourci</translation>
    </message>
    <message>
        <source>Nainstalováno</source>
        <translation>Installé</translation>
    </message>
    <message>
        <source>Nainstaluj: npm i -g @openai/codex (nebo brew install codex). Codex ve webovém ChatGPT ani rozšíření do editoru žádné CLI neinstalují.</source>
        <translation>Installe-le : npm i -g @openai/codex (ou brew install codex). Ni Codex sur le site ChatGPT ni les extensions d’éditeur n’installent de CLI.</translation>
    </message>
    <message>
        <source>Nastavení se mezitím změnilo.</source>
        <translation>Les réglages ont changé entre-temps.</translation>
    </message>
    <message>
        <source>Nastavení se nepodařilo uložit: {duvod}</source>
        <translation>Les réglages n’ont pas pu être enregistrés : {duvod}</translation>
    </message>
    <message>
        <source>Načti tento kód v aplikaci Morvex na telefonu.</source>
        <translation>Scanne ce code dans l’app Morvex du téléphone.</translation>
    </message>
    <message>
        <source>Nejde to přečíst jako base64.</source>
        <translation>Illisible comme base64.</translation>
    </message>
    <message>
        <source>Nenainstalováno</source>
        <translation>Non installé</translation>
    </message>
    <message>
        <source>Nepodařilo se spustit: {duvod}</source>
        <translation>Impossible à lancer : {duvod}</translation>
    </message>
    <message>
        <source>Neshoduje se</source>
        <translation>Ils diffèrent</translation>
    </message>
    <message>
        <source>Nespárováno</source>
        <translation>Non associé</translation>
    </message>
    <message>
        <source>Neznámý druh rámce.</source>
        <translation>Type de trame inconnu.</translation>
    </message>
    <message>
        <source>Neznámý nástroj.</source>
        <translation>Outil inconnu.</translation>
    </message>
    <message>
        <source>Nečekaná odpověď na přihlášení.</source>
        <translation>Réponse inattendue à la connexion.</translation>
    </message>
    <message>
        <source>Nový token — ponech prázdné beze změny</source>
        <translation>Nouveau jeton — laisse vide pour garder l’actuel</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není na Macu k dispozici: {duvod}</source>
        <translation>L’outil {nastroj} n’est pas disponible sur le Mac : {duvod}</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není nainstalovaný.</source>
        <translation>L’outil {nastroj} n’est pas installé.</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není povolený: {duvod}</source>
        <translation>L’outil {nastroj} n’est pas autorisé : {duvod}</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} neznám.</source>
        <translation>L’outil {nastroj} est inconnu.</translation>
    </message>
    <message>
        <source>Nástroj nevrátil žádný text.</source>
        <translation>L’outil n’a renvoyé aucun texte.</translation>
    </message>
    <message>
        <source>Nástroje Macu</source>
        <translation>Outils du Mac</translation>
    </message>
    <message>
        <source>Název</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>O aplikaci</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>Obnovit stav</source>
        <translation>Actualiser</translation>
    </message>
    <message>
        <source>Obálka je od jiného zařízení.</source>
        <translation>L’enveloppe vient d’un autre appareil.</translation>
    </message>
    <message>
        <source>Obálka není pro mě.</source>
        <translation>L’enveloppe n’est pas pour moi.</translation>
    </message>
    <message>
        <source>Obálka patří jinému páru.</source>
        <translation>L’enveloppe appartient à une autre paire.</translation>
    </message>
    <message>
        <source>Odebere se i její token. Asistentka pak její nástroje nebude mít.</source>
        <translation>Son jeton est supprimé aussi. L’assistante n’aura plus ses outils.</translation>
    </message>
    <message>
        <source>Odebrat</source>
        <translation>Retirer</translation>
    </message>
    <message>
        <source>Odebrat aplikaci „%1“?</source>
        <translation>Retirer l’app « %1 » ?</translation>
    </message>
    <message>
        <source>Odpojit</source>
        <translation>Dissocier</translation>
    </message>
    <message>
        <source>Odpojit telefon</source>
        <translation>Dissocier le téléphone</translation>
    </message>
    <message>
        <source>Odpojit telefon?</source>
        <translation>Dissocier le téléphone ?</translation>
    </message>
    <message>
        <source>Odpověď serveru je příliš dlouhá.</source>
        <translation>La réponse du serveur est trop longue.</translation>
    </message>
    <message>
        <source>OpenAI klíč bezpečně převzat z iPhonu</source>
        <translation>Clé OpenAI reçue de l’iPhone en toute sécurité</translation>
    </message>
    <message>
        <source>Operace překročila limit {vterin} vteřin a byla zastavena.</source>
        <translation>L’opération a dépassé la limite de {vterin} secondes et a été arrêtée.</translation>
    </message>
    <message>
        <source>Operace skončila dřív, než dala výsledek.</source>
        <translation>L’opération s’est terminée avant de donner un résultat.</translation>
    </message>
    <message>
        <source>Oprávnění ke složce {slozka} se nepodařilo uložit: {duvod}</source>
        <translation>L’autorisation du dossier {slozka} n’a pas pu être enregistrée : {duvod}</translation>
    </message>
    <message>
        <source>Osobní data</source>
        <translation>Données personnelles</translation>
    </message>
    <message>
        <source>Otevřít nastavení</source>
        <translation>Ouvrir les réglages</translation>
    </message>
    <message>
        <source>Otisk klíče nesedí.</source>
        <translation>L’empreinte de la clé ne convient pas.</translation>
    </message>
    <message>
        <source>Ověřovací značka zprávy má špatnou délku.</source>
        <translation>Le code d’authentification du message a une longueur incorrecte.</translation>
    </message>
    <message>
        <source>Platnost certifikátu serveru skončila. Zkontroluj hodiny počítače, nebo na serveru certifikát obnov.</source>
        <translation>Le certificat du serveur a expiré. Vérifie l’horloge de l’ordinateur, ou renouvelle le certificat sur le serveur.</translation>
    </message>
    <message>
        <source>Po chvíli nečinnosti usne a přestane být dostupný</source>
        <translation>S’endort après un moment d’inactivité et n’est alors plus joignable</translation>
    </message>
    <message>
        <source>Podle iPhonu</source>
        <translation>Comme sur l’iPhone</translation>
    </message>
    <message>
        <source>Podpis zprávy nesedí. Spojení jsem zahodil.</source>
        <translation>La signature du message ne convient pas. J’ai abandonné la connexion.</translation>
    </message>
    <message>
        <source>Pokračovat v Claude</source>
        <translation>Poursuivre dans Claude</translation>
    </message>
    <message>
        <source>Pokračovat v Codexu</source>
        <translation>Poursuivre dans Codex</translation>
    </message>
    <message>
        <source>Pole „{pole}“ chybí.</source>
        <translation>Le champ « {pole} » manque.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má neznámou hodnotu „{hodnota}“.</source>
        <translation>Le champ « {pole} » a la valeur inconnue « {hodnota} ».</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má neznámý druh „{druh}“.</source>
        <translation>Le champ « {pole} » est du genre inconnu « {druh} ».</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má nečitelnou hodnotu „{hodnota}“.</source>
        <translation>La valeur « {hodnota} » du champ « {pole} » est illisible.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má číslo mimo rozsah.</source>
        <translation>Le nombre du champ « {pole} » est hors limites.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má špatný typ ({typ}).</source>
        <translation>Le champ « {pole} » a un mauvais type ({typ}).</translation>
    </message>
    <message>
        <source>Poslední změnu z telefonu se nepodařilo uložit: {duvod}</source>
        <translation>La dernière modification du téléphone n’a pas pu être enregistrée : {duvod}</translation>
    </message>
    <message>
        <source>Poslední úkoly</source>
        <translation>Tâches récentes</translation>
    </message>
    <message>
        <source>Potvrdit</source>
        <translation>Confirmer</translation>
    </message>
    <message>
        <source>Potvrdit můžeš tady i hlasem na telefonu. Bez potvrzení se neprovede nic — ani po vypršení.</source>
        <translation>Tu peux confirmer ici ou par la voix sur le téléphone. Sans confirmation, rien n’est fait — même après l’expiration.</translation>
    </message>
    <message>
        <source>Potvrzeno %1</source>
        <translation>Confirmé le %1</translation>
    </message>
    <message>
        <source>Povolené složky</source>
        <translation>Dossiers autorisés</translation>
    </message>
    <message>
        <source>Povolit</source>
        <translation>Autoriser</translation>
    </message>
    <message>
        <source>Povolit akci na Macu</source>
        <translation>Autoriser une action sur le Mac</translation>
    </message>
    <message>
        <source>Povolit složku %1?</source>
        <translation>Autoriser le dossier %1 ?</translation>
    </message>
    <message>
        <source>Poznámka „{nazev}“ je na přenos příliš dlouhá, telefon ji nedostane.</source>
        <translation>La note « {nazev} » est trop longue pour être envoyée ; le téléphone ne la recevra pas.</translation>
    </message>
    <message>
        <source>Poznámky Morvex</source>
        <translation>Notes Morvex</translation>
    </message>
    <message>
        <source>Poznámky vytvořené na iPhonu se po zabezpečeném spojení objeví tady a zůstanou dostupné i offline.</source>
        <translation>Les notes créées sur l’iPhone apparaissent ici une fois la connexion sécurisée et restent disponibles hors ligne.</translation>
    </message>
    <message>
        <source>Počítač se nepodařilo udržet vzhůru: {duvod}</source>
        <translation>L’ordinateur n’a pas pu être gardé éveillé : {duvod}</translation>
    </message>
    <message>
        <source>Počítači došla paměť nebo už nemůže mít víc otevřených souborů a procesů.</source>
        <translation>L’ordinateur n’a plus assez de mémoire, de fichiers ouverts ou de processus.</translation>
    </message>
    <message>
        <source>Pracuje</source>
        <translation>Travaille</translation>
    </message>
    <message>
        <source>Pracuje: {cim}</source>
        <translation>Occupé : {cim}</translation>
    </message>
    <message>
        <source>Pravidelné souhrny vytvořené na iPhonu se objeví tady a zůstanou dostupné i offline.</source>
        <translation>Les résumés réguliers créés sur l’iPhone apparaissent ici et restent disponibles hors ligne.</translation>
    </message>
    <message>
        <source>Proces skončil s kódem {kod}.</source>
        <translation>Le processus s’est terminé avec le code {kod}.</translation>
    </message>
    <message>
        <source>Protějšek poslal představení, kterému nerozumím.</source>
        <translation>L’autre côté a envoyé une présentation que je ne comprends pas.</translation>
    </message>
    <message>
        <source>Právě to používá jiný program.</source>
        <translation>Un autre programme l’utilise en ce moment.</translation>
    </message>
    <message>
        <source>Prázdné zadání.</source>
        <translation>La tâche est vide.</translation>
    </message>
    <message>
        <source>Párování neplatí — {duvod}</source>
        <translation>L’association n’est pas valable — {duvod}</translation>
    </message>
    <message>
        <source>Párování s telefonem</source>
        <translation>Association avec un téléphone</translation>
    </message>
    <message>
        <source>Párování se nepodařilo uložit: {duvod}</source>
        <translation>L’association n’a pas pu être enregistrée : {duvod}</translation>
    </message>
    <message>
        <source>Představení protějšku má neplatný podpis. Spojení nešifruju.</source>
        <translation>La présentation de l’autre côté a une signature non valable. Je ne chiffre pas la connexion.</translation>
    </message>
    <message>
        <source>Představení telefonu má neplatný podpis. Nic jsem neuložil.</source>
        <translation>La présentation du téléphone a une signature non valable. Je n’ai rien enregistré.</translation>
    </message>
    <message>
        <source>Přerušeno</source>
        <translation>Interrompu</translation>
    </message>
    <message>
        <source>Při napájení udržovat Morvex dostupný</source>
        <translation>Garder Morvex disponible sur secteur</translation>
    </message>
    <message>
        <source>Přidat aplikaci</source>
        <translation>Ajouter une app</translation>
    </message>
    <message>
        <source>Přidat nebo obnovit složku</source>
        <translation>Ajouter ou renouveler un dossier</translation>
    </message>
    <message>
        <source>Přidat složku jde jen odsud. Telefon ani asistentka seznam rozšířit nemůžou.</source>
        <translation>Un dossier ne s’ajoute qu’ici. Ni le téléphone ni l’assistante ne peuvent étendre la liste.</translation>
    </message>
    <message>
        <source>Přidat vlastní aplikaci</source>
        <translation>Ajouter une app personnelle</translation>
    </message>
    <message>
        <source>Přidej první aplikaci tady nebo ji synchronizuj z iPhonu.</source>
        <translation>Ajoute la première app ici ou synchronise-la depuis l’iPhone.</translation>
    </message>
    <message>
        <source>Přidáno na Macu</source>
        <translation>Ajoutée sur le Mac</translation>
    </message>
    <message>
        <source>Přihlašovací služba systému to nezařídila: {duvod}</source>
        <translation>Le service de session du système ne l’a pas fait : {duvod}</translation>
    </message>
    <message>
        <source>Přihlášení Claude Code selhalo. V Terminálu spusť `claude auth login` a potom v aplikaci klikni na Zjistit znovu.</source>
        <translation>La connexion de Claude Code a échoué. Lance `claude auth login` dans un terminal, puis clique dans l’app sur Rechercher à nouveau.</translation>
    </message>
    <message>
        <source>Připoj vlastní MCP službu přes zabezpečenou HTTPS adresu.</source>
        <translation>Connecte ton propre service MCP à une adresse HTTPS sécurisée.</translation>
    </message>
    <message>
        <source>Připojuji…</source>
        <translation>Connexion…</translation>
    </message>
    <message>
        <source>Připojuji… ({cislo}. pokus)</source>
        <translation>Connexion… (tentative {cislo})</translation>
    </message>
    <message>
        <source>Připomínky</source>
        <translation>Rappels</translation>
    </message>
    <message>
        <source>Připraven</source>
        <translation>Prêt</translation>
    </message>
    <message>
        <source>Přístupový token — volitelný</source>
        <translation>Jeton d’accès — facultatif</translation>
    </message>
    <message>
        <source>QR kód</source>
        <translation>Code QR</translation>
    </message>
    <message>
        <source>QR kód se nepodařilo vykreslit.</source>
        <translation>Le code QR n’a pas pu être dessiné.</translation>
    </message>
    <message>
        <source>Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aktuální aplikace Claude.</source>
        <translation>La session n’a pas pu être ouverte. Vérifie que l’app Claude actuelle est installée.</translation>
    </message>
    <message>
        <source>Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aplikace Codex.</source>
        <translation>La session n’a pas pu être ouverte. Vérifie que l’app Codex est installée.</translation>
    </message>
    <message>
        <source>Relay</source>
        <translation>Relais</translation>
    </message>
    <message>
        <source>Relay neodpověděl.</source>
        <translation>Le relais n’a pas répondu.</translation>
    </message>
    <message>
        <source>Relay neposlal výzvu.</source>
        <translation>Le relais n’a pas envoyé de défi.</translation>
    </message>
    <message>
        <source>Relay odmítl požadavek ({stav}).</source>
        <translation>Le relais a refusé la requête ({stav}).</translation>
    </message>
    <message>
        <source>Server odmítl WebSocket (HTTP {stav}).</source>
        <translation>Le serveur a refusé le WebSocket (HTTP {stav}).</translation>
    </message>
    <message>
        <source>Server odpověděl nesrozumitelně.</source>
        <translation>La réponse du serveur est incompréhensible.</translation>
    </message>
    <message>
        <source>Server se neozval včas.</source>
        <translation>Le serveur n’a pas répondu à temps.</translation>
    </message>
    <message>
        <source>Server spojení odmítl. Nejspíš neběží, nebo má jiný port, než je v adrese.</source>
        <translation>Le serveur a refusé la connexion. Il ne tourne sans doute pas, ou son port n’est pas celui de l’adresse.</translation>
    </message>
    <message>
        <source>Server ukončil spojení (kód {kod}).</source>
        <translation>Le serveur a mis fin à la connexion (code {kod}).</translation>
    </message>
    <message>
        <source>Server spojení ukončil.</source>
        <translation>Le serveur a mis fin à la connexion.</translation>
    </message>
    <message>
        <source>Spojení s poštovním serverem selhalo: {potiz}</source>
        <translation>La connexion au serveur de messagerie a échoué : {potiz}</translation>
    </message>
    <message>
        <source>Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.</source>
        <translation>Le serveur a refusé la connexion. Vérifie l’adresse et le mot de passe ou le mot de passe d’application.</translation>
    </message>
    <message>
        <source>E-mailová adresa není platná.</source>
        <translation>L’adresse e-mail n’est pas valide.</translation>
    </message>
    <message>
        <source>Spojení bylo zrušeno.</source>
        <translation>La connexion a été annulée.</translation>
    </message>
    <message>
        <source>Server se do 15 sekund nepřipojil.</source>
        <translation>Le serveur ne s’est pas connecté en 15 secondes.</translation>
    </message>
    <message>
        <source>Server nepřijal data.</source>
        <translation>Le serveur n’a pas accepté les données.</translation>
    </message>
    <message>
        <source>Server neodpověděl.</source>
        <translation>Le serveur n’a pas répondu.</translation>
    </message>
    <message>
        <source>Server odpověděl: {odpoved}</source>
        <translation>Le serveur a répondu : {odpoved}</translation>
    </message>
    <message>
        <source>Nesrozumitelná odpověď SMTP serveru.</source>
        <translation>La réponse du serveur SMTP est incompréhensible.</translation>
    </message>
    <message>
        <source>SMTP server odpověděl: {odpoved}</source>
        <translation>Le serveur SMTP a répondu : {odpoved}</translation>
    </message>
    <message>
        <source>K serveru {server} se nepodařilo připojit: {potiz}</source>
        <translation>Impossible de se connecter au serveur {server} : {potiz}</translation>
    </message>
    <message>
        <source>Spojení nestíhá odesílat.</source>
        <translation>La connexion ne parvient pas à suivre l’envoi.</translation>
    </message>
    <message>
        <source>Seznam autorit, kterým tento počítač věří, nejde přečíst.</source>
        <translation>La liste des autorités auxquelles cet ordinateur fait confiance est illisible.</translation>
    </message>
    <message>
        <source>Skončilo chybou</source>
        <translation>Échec</translation>
    </message>
    <message>
        <source>Složka {cesta} neexistuje.</source>
        <translation>Le dossier {cesta} n’existe pas.</translation>
    </message>
    <message>
        <source>Složka {cesta} už není povolená.</source>
        <translation>Le dossier {cesta} n’est plus autorisé.</translation>
    </message>
    <message>
        <source>Složku s daty „{slozka}“ nejde použít: {duvod}</source>
        <translation>Le dossier de données « {slozka} » n’est pas utilisable : {duvod}</translation>
    </message>
    <message>
        <source>Služba počítače se neozvala včas.</source>
        <translation>Le service de l’ordinateur n’a pas répondu à temps.</translation>
    </message>
    <message>
        <source>Soubor je příliš velký.</source>
        <translation>Le fichier est trop volumineux.</translation>
    </message>
    <message>
        <source>Soubor nebo složka neexistuje.</source>
        <translation>Le fichier ou le dossier n’existe pas.</translation>
    </message>
    <message>
        <source>Soubor není program pro tento počítač.</source>
        <translation>Le fichier n’est pas un programme pour cet ordinateur.</translation>
    </message>
    <message>
        <source>Soubor s nastavením byl poškozený; je odložený jako {soubor}</source>
        <translation>Le fichier des réglages était endommagé ; il est mis de côté sous {soubor}</translation>
    </message>
    <message>
        <source>Soubor s nastavením je poškozený a nejde odložit: {duvod}</source>
        <translation>Le fichier des réglages est endommagé et ne peut être mis de côté : {duvod}</translation>
    </message>
    <message>
        <source>Soubor s nastavením nejde přečíst: {duvod}</source>
        <translation>Le fichier des réglages est illisible : {duvod}</translation>
    </message>
    <message>
        <source>Soubory</source>
        <translation>Fichiers</translation>
    </message>
    <message>
        <source>Souhlasí</source>
        <translation>Ils sont identiques</translation>
    </message>
    <message>
        <source>Souhrny Morvex</source>
        <translation>Résumés Morvex</translation>
    </message>
    <message>
        <source>Spojení</source>
        <translation>Connexion</translation>
    </message>
    <message>
        <source>Spojení bylo uzavřeno.</source>
        <translation>La connexion a été fermée.</translation>
    </message>
    <message>
        <source>Spojení je zavřené.</source>
        <translation>La connexion est fermée.</translation>
    </message>
    <message>
        <source>Spojení přerušeno — {duvod}</source>
        <translation>Connexion interrompue — {duvod}</translation>
    </message>
    <message>
        <source>Spojení se přerušilo.</source>
        <translation>La connexion a été coupée.</translation>
    </message>
    <message>
        <source>Spouští příkazy v povolených složkách a umí spustit jakýkoli kód</source>
        <translation>Exécute des commandes dans les dossiers autorisés et peut exécuter n’importe quel code</translation>
    </message>
    <message>
        <source>Spouštění po přihlášení se nepodařilo nastavit: {duvod}</source>
        <translation>Le lancement à l’ouverture de session n’a pas pu être réglé : {duvod}</translation>
    </message>
    <message>
        <source>Spouštět po přihlášení</source>
        <translation>Lancer à l’ouverture de session</translation>
    </message>
    <message>
        <source>Spravovat</source>
        <translation>Gérer</translation>
    </message>
    <message>
        <source>Spárovaný telefon</source>
        <translation>Téléphone associé</translation>
    </message>
    <message>
        <source>Spárovat jiný telefon</source>
        <translation>Associer un autre téléphone</translation>
    </message>
    <message>
        <source>Stav se nepodařilo odeslat: {duvod}</source>
        <translation>L’état n’a pas pu être envoyé : {duvod}</translation>
    </message>
    <message>
        <source>Synchronizováno z iPhonu</source>
        <translation>Synchronisée depuis l’iPhone</translation>
    </message>
    <message>
        <source>Adresa relaye vede jen na tento počítač. Jiné zařízení se přes ni nepřipojí.</source>
        <translation>L’adresse du relais ne mène qu’à cet ordinateur. Aucun autre appareil ne peut s’y connecter.</translation>
    </message>
    <message>
        <source>Systém ohlásil chybu, kterou neznám.</source>
        <translation>Le système a signalé une erreur que je ne connais pas.</translation>
    </message>
    <message>
        <source>Takovou cestu nejde použít.</source>
        <translation>Un tel chemin n’est pas utilisable.</translation>
    </message>
    <message>
        <source>Telefon</source>
        <translation>Téléphone</translation>
    </message>
    <message>
        <source>Telefon a Mac mluví jinou verzí protokolu ({moje} proti {jeho}). Aktualizuj tu starší aplikaci.</source>
        <translation>Le téléphone et le Mac parlent des versions différentes du protocole ({moje} contre {jeho}). Mets à jour l’app la plus ancienne.</translation>
    </message>
    <message>
        <source>Telefon mezitím odešel. Pokud párování vzdal, nepřipojí se a je potřeba ho spárovat znovu.</source>
        <translation>Le téléphone est parti entre-temps. S’il a abandonné l’appairage, il ne se connectera pas et devra être appairé à nouveau.</translation>
    </message>
    <message>
        <source>Telefon není připojený</source>
        <translation>Le téléphone n’est pas connecté</translation>
    </message>
    <message>
        <source>Telefon poslal nekompatibilní párovací zprávu: {duvod}</source>
        <translation>Le téléphone a envoyé un message d’association incompatible : {duvod}</translation>
    </message>
    <message>
        <source>Telefon se ozval. Shoduje se tohle číslo s tím na jeho obrazovce?</source>
        <translation>Le téléphone a répondu. Ce nombre est-il le même que sur son écran ?</translation>
    </message>
    <message>
        <source>Telefon spí ({minut} min)</source>
        <translation>Le téléphone dort ({minut} min)</translation>
    </message>
    <message>
        <source>Telefon tenhle Mac přestane vidět. Aby se k němu zase dostal, budeš ho muset znovu spárovat.</source>
        <translation>Le téléphone ne verra plus ce Mac. Pour qu’il le revoie, il faudra l’associer de nouveau.</translation>
    </message>
    <message>
        <source>Tento systém nebo disk to neumí.</source>
        <translation>Ce système ou ce disque ne sait pas le faire.</translation>
    </message>
    <message>
        <source>Tento úkol ještě nemá relaci, ve které by šlo pokračovat.</source>
        <translation>Cette tâche n’a pas encore de session dans laquelle la poursuivre.</translation>
    </message>
    <message>
        <source>Terminál</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Text kódu je zkopírovaný.</source>
        <translation>Le texte du code est copié.</translation>
    </message>
    <message>
        <source>To je celý disk: telefon se pak dostane ke všemu, k čemu se tu dostaneš ty.</source>
        <translation>C’est le disque entier : le téléphone aura accès à tout ce à quoi tu as accès ici.</translation>
    </message>
    <message>
        <source>To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům.</source>
        <translation>C’est ton dossier personnel : le téléphone aura accès à tous tes fichiers.</translation>
    </message>
    <message>
        <source>Tohle potřebuje potvrzení: {co}</source>
        <translation>Ceci doit être confirmé : {co}</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>Jeton</translation>
    </message>
    <message>
        <source>Token se ukládá pouze do Keychainu tohoto Macu.</source>
        <translation>Le jeton n’est conservé que dans le trousseau de ce Mac.</translation>
    </message>
    <message>
        <source>Trezor odmítl mazání {ucet}: {duvod}</source>
        <translation>Le coffre a refusé la suppression de {ucet} : {duvod}</translation>
    </message>
    <message>
        <source>Trezor odmítl zápis {ucet}: {duvod}</source>
        <translation>Le coffre a refusé l’écriture de {ucet} : {duvod}</translation>
    </message>
    <message>
        <source>Trezor odmítl čtení {ucet}: {duvod}</source>
        <translation>Le coffre a refusé la lecture de {ucet} : {duvod}</translation>
    </message>
    <message>
        <source>Tuhle zprávu jsem už jednou zpracoval. Podruhé ji neprovádím.</source>
        <translation>J’ai déjà traité ce message. Je ne l’exécute pas une seconde fois.</translation>
    </message>
    <message>
        <source>U složek označených níže je potřeba jednou obnovit přístup. Klikni na Přidat nebo obnovit složku a vyber je znovu.</source>
        <translation>L’accès aux dossiers marqués ci-dessous doit être renouvelé une fois. Clique sur Ajouter ou renouveler un dossier et choisis-les à nouveau.</translation>
    </message>
    <message>
        <source>Ukončit Morvex</source>
        <translation>Quitter Morvex</translation>
    </message>
    <message>
        <source>Uložená adresa relaye nedává smysl.</source>
        <translation>L’adresse enregistrée du relais n’a pas de sens.</translation>
    </message>
    <message>
        <source>Uložit</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Upraveno %1</source>
        <translation>Modifié le %1</translation>
    </message>
    <message>
        <source>Upravit</source>
        <translation>Modifier</translation>
    </message>
    <message>
        <source>Upravit vlastní aplikaci</source>
        <translation>Modifier une app personnelle</translation>
    </message>
    <message>
        <source>Už běží jiný úkol: {nastroj}. Počkej, nebo ho zruš.</source>
        <translation>Une autre tâche est en cours : {nastroj}. Attends ou annule-la.</translation>
    </message>
    <message>
        <source>V Apple Mailu není nastavený žádný účet.</source>
        <translation>Aucun compte n’est configuré dans Apple Mail.</translation>
    </message>
    <message>
        <source>V Morvex není povolený žádný poštovní účet.</source>
        <translation>Aucun compte de messagerie n’est autorisé dans Morvex.</translation>
    </message>
    <message>
        <source>V téhle složce leží tvoje domovská: telefon se pak dostane ke všem tvým souborům.</source>
        <translation>Ton dossier personnel se trouve dans ce dossier : le téléphone aura accès à tous tes fichiers.</translation>
    </message>
    <message>
        <source>Verze aplikace</source>
        <translation>Version de l’app</translation>
    </message>
    <message>
        <source>Verze protokolu</source>
        <translation>Version du protocole</translation>
    </message>
    <message>
        <source>Veřejný klíč protějšku není bezpečný.</source>
        <translation>La clé publique de l’autre côté n’est pas sûre.</translation>
    </message>
    <message>
        <source>Vlastní aplikace</source>
        <translation>Apps personnelles</translation>
    </message>
    <message>
        <source>Vlastní aplikace odmítla přístupový token.</source>
        <translation>L’app personnelle a refusé le jeton d’accès.</translation>
    </message>
    <message>
        <source>Vlastní aplikace vrátila HTTP {kod}.</source>
        <translation>L’app personnelle a répondu HTTP {kod}.</translation>
    </message>
    <message>
        <source>Vlastní aplikace vrátila neplatnou odpověď.</source>
        <translation>L’app personnelle a donné une réponse non valable.</translation>
    </message>
    <message>
        <source>Vyber v nastavení Morvex výchozí účet pro odesílání.</source>
        <translation>Choisis dans les réglages de Morvex le compte d’envoi par défaut.</translation>
    </message>
    <message>
        <source>Vyber složky, ve kterých smí Morvex pracovat.</source>
        <translation>Choisis les dossiers dans lesquels Morvex peut travailler.</translation>
    </message>
    <message>
        <source>Vyhledávání na webu</source>
        <translation>Recherche sur le web</translation>
    </message>
    <message>
        <source>Vyhrazené místo na disku je vyčerpané.</source>
        <translation>Le quota sur le disque est épuisé.</translation>
    </message>
    <message>
        <source>Vymazat</source>
        <translation>Effacer</translation>
    </message>
    <message>
        <source>Vymazat historii</source>
        <translation>Effacer l’historique</translation>
    </message>
    <message>
        <source>Vymazat historii úkolů?</source>
        <translation>Effacer l’historique des tâches ?</translation>
    </message>
    <message>
        <source>Vyžaduje znovu povolit</source>
        <translation>À autoriser de nouveau</translation>
    </message>
    <message>
        <source>Výchozí volba se synchronizuje z hlavního iPhonu.</source>
        <translation>Le choix par défaut est synchronisé depuis l’iPhone principal.</translation>
    </message>
    <message>
        <source>Zadání je pro program příliš dlouhé.</source>
        <translation>La demande est trop longue pour le programme.</translation>
    </message>
    <message>
        <source>Zakládám pár…</source>
        <translation>Création de la paire…</translation>
    </message>
    <message>
        <source>Zamítnout</source>
        <translation>Refuser</translation>
    </message>
    <message>
        <source>Zamítnuto.</source>
        <translation>Refusé.</translation>
    </message>
    <message>
        <source>Zamítnuto: {duvod}</source>
        <translation>Refusé : {duvod}</translation>
    </message>
    <message>
        <source>Zapni jen služby, které má Morvex na tomto Macu používat.</source>
        <translation>N’active que les services que Morvex doit utiliser sur ce Mac.</translation>
    </message>
    <message>
        <source>Zastavit</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Zatím žádný telefon. Morvex for Mac nic nedělá, dokud se nespáruje.</source>
        <translation>Pas encore de téléphone. Morvex for Mac ne fait rien tant qu’il n’est pas associé.</translation>
    </message>
    <message>
        <source>Zavřít</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Zařízení bylo odvoláno.</source>
        <translation>L’appareil a été révoqué.</translation>
    </message>
    <message>
        <source>Zařízení není spárované. {duvod}</source>
        <translation>L’appareil n’est pas associé. {duvod}</translation>
    </message>
    <message>
        <source>Zjistit znovu</source>
        <translation>Rechercher à nouveau</translation>
    </message>
    <message>
        <source>Zjišťuji…</source>
        <translation>Recherche…</translation>
    </message>
    <message>
        <source>Zkopírováno</source>
        <translation>Copié</translation>
    </message>
    <message>
        <source>Zkusit hned</source>
        <translation>Essayer maintenant</translation>
    </message>
    <message>
        <source>Zkusit znovu</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Změna se projeví od příštího hlasového rozhovoru a bezpečně se oznámí spárovanému iPhonu.</source>
        <translation>Le changement prend effet à la prochaine conversation vocale et l’iPhone associé en est informé de façon sûre.</translation>
    </message>
    <message>
        <source>Zobrazit QR kód</source>
        <translation>Afficher le code QR</translation>
    </message>
    <message>
        <source>Zpráva chybí.</source>
        <translation>Le message manque.</translation>
    </message>
    <message>
        <source>Zpráva dorazila dřív, než bylo spojení zabezpečené. Zopakuj to.</source>
        <translation>Le message est arrivé avant que la connexion soit sécurisée. Recommence.</translation>
    </message>
    <message>
        <source>Zpráva dorazila mimo dobu své platnosti. Zkontroluj hodiny na obou zařízeních.</source>
        <translation>Le message est arrivé hors de sa durée de validité. Vérifie l’heure des deux appareils.</translation>
    </message>
    <message>
        <source>Zpráva dorazila pozdě, po {vterin} vteřinách. Neprovedl jsem ji.</source>
        <translation>Le message est arrivé trop tard, après {vterin} secondes. Je ne l’ai pas exécuté.</translation>
    </message>
    <message>
        <source>Zpráva je na přenos příliš dlouhá.</source>
        <translation>Le message est trop long pour être transmis.</translation>
    </message>
    <message>
        <source>Zpráva je na zašifrování moc dlouhá.</source>
        <translation>Le message est trop long pour être chiffré.</translation>
    </message>
    <message>
        <source>Zpráva je příliš dlouhá.</source>
        <translation>Le message est trop long.</translation>
    </message>
    <message>
        <source>Zpráva má neznámou hodnotu „{hodnota}“.</source>
        <translation>Le message a la valeur inconnue « {hodnota} ».</translation>
    </message>
    <message>
        <source>Zpráva má neznámý druh „{druh}“.</source>
        <translation>Le message est du genre inconnu « {druh} ».</translation>
    </message>
    <message>
        <source>Zpráva má nečitelnou hodnotu „{hodnota}“.</source>
        <translation>La valeur « {hodnota} » du message est illisible.</translation>
    </message>
    <message>
        <source>Zpráva má příliš mnoho hodnot.</source>
        <translation>Le message a trop de valeurs.</translation>
    </message>
    <message>
        <source>Zpráva má číslo mimo rozsah.</source>
        <translation>Le nombre du message est hors limites.</translation>
    </message>
    <message>
        <source>Zpráva má špatný typ ({typ}).</source>
        <translation>Le message a un mauvais type ({typ}).</translation>
    </message>
    <message>
        <source>Zpráva není platný JSON (bajt {bajt}).</source>
        <translation>Le message n’est pas un JSON valable (octet {bajt}).</translation>
    </message>
    <message>
        <source>Zpráva není zašifrovaná pro tohle spojení, nebo ji někdo změnil.</source>
        <translation>Le message n’est pas chiffré pour cette connexion, ou quelqu’un l’a modifié.</translation>
    </message>
    <message>
        <source>Zpráva neprošla ověřením.</source>
        <translation>Le message n’a pas passé la vérification.</translation>
    </message>
    <message>
        <source>Zpráva se opakuje nebo dorazila mimo pořadí.</source>
        <translation>Le message est répété ou est arrivé dans le désordre.</translation>
    </message>
    <message>
        <source>Zprávu nejde ověřit: {duvod}</source>
        <translation>Le message ne peut pas être vérifié : {duvod}</translation>
    </message>
    <message>
        <source>Zrušeno.</source>
        <translation>Annulé.</translation>
    </message>
    <message>
        <source>Zrušit</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Zůstane vzhůru, dokud je v zásuvce</source>
        <translation>Reste éveillé tant qu’il est branché</translation>
    </message>
    <message>
        <source>iPhone zůstává hlavní zařízení</source>
        <translation>L’iPhone reste l’appareil principal</translation>
    </message>
    <message>
        <source>kód {cislo}</source>
        <translation>code {cislo}</translation>
    </message>
    <message>
        <source>macOS nepovolil ovládání aplikace Mail. Otevři Nastavení systému → Soukromí a zabezpečení → Automatizace a povol tam Morvex přístup k Mailu.</source>
        <translation>macOS n’a pas autorisé le contrôle de Mail. Ouvre Réglages Système → Confidentialité et sécurité → Automatisation et autorise Morvex à accéder à Mail.</translation>
    </message>
    <message>
        <source>objekt</source>
        <translation>objet</translation>
    </message>
    <message>
        <source>pole</source>
        <translation>liste</translation>
    </message>
    <message>
        <source>položka neexistuje</source>
        <translation>l’élément n’existe pas</translation>
    </message>
    <message>
        <source>položka už existuje</source>
        <translation>l’élément existe déjà</translation>
    </message>
    <message>
        <source>položku nejde číst nebo zapsat</source>
        <translation>l’élément ne peut être lu ni écrit</translation>
    </message>
    <message>
        <source>pravdivostní hodnota</source>
        <translation>valeur booléenne</translation>
    </message>
    <message>
        <source>text</source>
        <translation>texte</translation>
    </message>
    <message>
        <source>trezor je zamčený</source>
        <translation>le coffre est verrouillé</translation>
    </message>
    <message>
        <source>trezor není dostupný</source>
        <translation>le coffre n’est pas disponible</translation>
    </message>
    <message>
        <source>uživatel odemčení zrušil</source>
        <translation>le déverrouillage a été annulé</translation>
    </message>
    <message>
        <source>z iPhonu · E2EE</source>
        <translation>de l’iPhone · E2EE</translation>
    </message>
    <message>
        <source>Úkoly zadané Codexu nebo Claude přes telefon se objeví tady. Pak v nich můžeš pokračovat jedním kliknutím.</source>
        <translation>Les tâches confiées à Codex ou à Claude par téléphone apparaissent ici. Tu pourras les poursuivre d’un clic.</translation>
    </message>
    <message>
        <source>Úkoly zůstanou v Claude a Codexu, ale Morvex už k nim nebude nabízet tlačítka pro pokračování.</source>
        <translation>Les tâches restent dans Claude et Codex, mais Morvex ne proposera plus de boutons pour les poursuivre.</translation>
    </message>
    <message>
        <source>Čeká na potvrzení: %1</source>
        <translation>En attente de confirmation : %1</translation>
    </message>
    <message>
        <source>Čekám na OpenAI klíč z iPhonu</source>
        <translation>En attente de la clé OpenAI de l’iPhone</translation>
    </message>
    <message>
        <source>Čekám na klíče tohoto počítače. Pokud se klíčenka ptá na heslo, odemkni ji.</source>
        <translation>En attente des clés de cet ordinateur. Si le trousseau demande son mot de passe, déverrouille-le.</translation>
    </message>
    <message>
        <source>Čekám na klíče tohoto počítače…</source>
        <translation>En attente des clés de cet ordinateur…</translation>
    </message>
    <message>
        <source>Část cesty není složka.</source>
        <translation>Une partie du chemin n’est pas un dossier.</translation>
    </message>
    <message>
        <source>Čísla se neshodovala. Párování jsem zrušil a nic neuložil. Zkus to znovu; pokud se to bude opakovat, někdo poslouchá.</source>
        <translation>Les nombres différaient. J’ai annulé l’association et rien enregistré. Réessaie ; si cela se répète, quelqu’un écoute.</translation>
    </message>
    <message>
        <source>číslo</source>
        <translation>nombre</translation>
    </message>
    <message>
        <source>Šifrované spojení se serverem se nepodařilo navázat. Pokud server na tomto portu nešifruje, jeho adresa začíná http://, ne https://.</source>
        <translation>Aucune connexion chiffrée n’a pu être établie avec le serveur. Si le serveur ne chiffre pas sur ce port, son adresse commence par http://, pas par https://.</translation>
    </message>
    <message>
        <source>Žádná. Bez povolené složky nemá Codex ani Claude Code kde pracovat, takže se telefonu vůbec nenabídnou.</source>
        <translation>Aucun. Sans dossier autorisé, ni Codex ni Claude Code n’ont où travailler ; ils ne sont donc pas proposés au téléphone.</translation>
    </message>
    <message>
        <source>Žádné vlastní aplikace</source>
        <translation>Aucune app personnelle</translation>
    </message>
    <message>
        <source>Mac není připojený</source>
        <translation>Le Mac n’est pas connecté</translation>
    </message>
    <message>
        <source>Mac spí ({minut} min)</source>
        <translation>Le Mac est en veille ({minut} min)</translation>
    </message>
    <message>
        <source>Vypnuto</source>
        <translation>Désactivé</translation>
    </message>
    <message>
        <source>Nainstaluj: npm i -g @anthropic-ai/claude-code</source>
        <translation>Installe-le : npm i -g @anthropic-ai/claude-code</translation>
    </message>
    <message>
        <source>Zjišťuji nástroje…</source>
        <translation>Recherche des outils…</translation>
    </message>
    <message>
        <source>Nepřipojeno: {duvod}</source>
        <translation>Non connectée : {duvod}</translation>
    </message>
    <message>
        <source>Co je vidět z nástrojů aplikací, se nepodařilo uložit: {duvod}</source>
        <translation>Ce qui a été vu des outils des apps n’a pas pu être enregistré : {duvod}</translation>
    </message>
    <message>
        <source>Změny nástrojů</source>
        <translation>Changements des outils</translation>
    </message>
    <message>
        <source>Změny nástrojů: %1</source>
        <translation>Changements des outils : %1</translation>
    </message>
    <message>
        <source>Změny nástrojů nejdřív schválit</source>
        <translation>Approuver d’abord les changements des outils</translation>
    </message>
    <message>
        <source>Změněný nebo nový nástroj pak asistentka nedostane, dokud se na něj nepodíváš.</source>
        <translation>L’assistante ne reçoit alors un outil changé ou nouveau qu’une fois que tu l’as regardé.</translation>
    </message>
    <message>
        <source>Od posledního pohledu se nic nezměnilo.</source>
        <translation>Rien n’a changé depuis ton dernier regard.</translation>
    </message>
    <message>
        <source>Nový nástroj: %1</source>
        <translation>Nouvel outil : %1</translation>
    </message>
    <message>
        <source>Změněný nástroj: %1</source>
        <translation>Outil changé : %1</translation>
    </message>
    <message>
        <source>Bylo: %1</source>
        <translation>Avant : %1</translation>
    </message>
    <message>
        <source>Je: %1</source>
        <translation>Maintenant : %1</translation>
    </message>
    <message>
        <source>Mezitím bylo: %1</source>
        <translation>Entre-temps : %1</translation>
    </message>
    <message>
        <source>Beru na vědomí</source>
        <translation>J’ai vu</translation>
    </message>
    <message>
        <source>Změněné nebo nové nástroje: %1</source>
        <translation>Outils changés ou nouveaux : %1</translation>
    </message>
    <message>
        <source>Aktuální veřejné informace se zdroji</source>
        <translation>Informations publiques actuelles avec sources</translation>
    </message>
    <message>
        <source>Webové hledání selhalo (HTTP {stav}).</source>
        <translation>La recherche web a échoué (HTTP {stav}).</translation>
    </message>
    <message>
        <source>Webové hledání vrátilo nečitelnou odpověď.</source>
        <translation>La recherche web a renvoyé une réponse illisible.</translation>
    </message>
    <message>
        <source>Chybí OpenAI API klíč.</source>
        <translation>La clé API OpenAI manque.</translation>
    </message>
    <message>
        <source>Chybí vyhledávací dotaz.</source>
        <translation>La requête de recherche manque.</translation>
    </message>
    <message numerus="yes">
        <source>Připojeno · {pocet} nástrojů · {doba} ms</source>
        <translation>
            <numerusform>Connectée · {pocet} outil · {doba} ms</numerusform>
            <numerusform>Connectée · {pocet} outils · {doba} ms</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Připojeno · {pocet} nástrojů · {ceka} čeká na schválení · {doba} ms</source>
        <translation>
            <numerusform>Connectée · {pocet} outil · {ceka} en attente d’approbation · {doba} ms</numerusform>
            <numerusform>Connectée · {pocet} outils · {ceka} en attente d’approbation · {doba} ms</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{stav} · {pocet} nástrojů se nedá použít nebo se nevešlo</source>
        <translation>
            <numerusform>{stav} · {pocet} outil est inutilisable ou n’a pas trouvé de place</numerusform>
            <numerusform>{stav} · {pocet} outils sont inutilisables ou n’ont pas trouvé de place</numerusform>
        </translation>
    </message>
    <message>
        <source>Chybí heslo k poštovnímu účtu.</source>
        <translation>Il manque le mot de passe du compte de messagerie.</translation>
    </message>
    <message>
        <source>Není nastavený žádný přímý SMTP/IMAP účet.</source>
        <translation>Aucun compte SMTP/IMAP direct n’est configuré.</translation>
    </message>
    <message>
        <source>Vyber výchozí SMTP účet nebo řekni jeho název.</source>
        <translation>Choisis un compte SMTP par défaut ou dis son nom.</translation>
    </message>
    <message>
        <source>Přímé SMTP neumí ukládat koncepty. Pro koncept použij účet v Apple Mailu.</source>
        <translation>Le SMTP direct ne garde pas de brouillons. Pour un brouillon, prends un compte d’Apple Mail.</translation>
    </message>
    <message>
        <source>SMTP účet „{nazev}“ není připojený.</source>
        <translation>Le compte SMTP « {nazev} » n’est pas connecté.</translation>
    </message>
    <message>
        <source>Zprávu s tímhle číslem jsem nenašel.</source>
        <translation>Je n’ai trouvé aucun message avec ce numéro.</translation>
    </message>
    <message>
        <source>E-mail byl odeslán z účtu {ucet}.</source>
        <translation>L’e-mail a été envoyé depuis le compte {ucet}.</translation>
    </message>
    <message>
        <source>Ověřuji…</source>
        <translation>Vérification…</translation>
    </message>
    <message>
        <source>Ověřeno</source>
        <translation>Vérifié</translation>
    </message>
    <message>
        <source>Chybí adresa nebo server.</source>
        <translation>Il manque l’adresse ou un serveur.</translation>
    </message>
    <message>
        <source>Není vybrán</source>
        <translation>Aucun choisi</translation>
    </message>
    <message numerus="yes">
        <source>{pocet} účtů vybráno</source>
        <translation>
            <numerusform>{pocet} compte choisi</numerusform>
            <numerusform>{pocet} comptes choisis</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} účtů</source>
        <translation>
            <numerusform>{pocet} compte</numerusform>
            <numerusform>{pocet} comptes</numerusform>
        </translation>
    </message>
    <message>
        <source>SMTP / IMAP</source>
        <translation>SMTP / IMAP</translation>
    </message>
    <message>
        <source>Přidat účet</source>
        <translation>Ajouter un compte</translation>
    </message>
    <message>
        <source>Přímé poštovní účty fungují nezávisle na Apple Mailu. Hesla zůstávají v Keychainu tohoto Macu.</source>
        <translation>Les comptes directs fonctionnent sans Apple Mail. Les mots de passe restent dans le trousseau de ce Mac.</translation>
    </message>
    <message>
        <source>Zatím není připojený žádný SMTP účet.</source>
        <translation>Aucun compte SMTP n’est encore connecté.</translation>
    </message>
    <message>
        <source>Výchozí účet pro odesílání</source>
        <translation>Compte d’envoi par défaut</translation>
    </message>
    <message>
        <source>Ověřit</source>
        <translation>Vérifier</translation>
    </message>
    <message>
        <source>Nastavit jako výchozí</source>
        <translation>Définir par défaut</translation>
    </message>
    <message>
        <source>Upravit SMTP účet</source>
        <translation>Modifier le compte SMTP</translation>
    </message>
    <message>
        <source>Přidat SMTP účet</source>
        <translation>Ajouter un compte SMTP</translation>
    </message>
    <message>
        <source>Odstranit účet</source>
        <translation>Supprimer le compte</translation>
    </message>
    <message>
        <source>Uložit a ověřit</source>
        <translation>Enregistrer et vérifier</translation>
    </message>
    <message>
        <source>Stejné údaje jako v iPhone aplikaci. IMAP používá port 993 a SMTP port 465 se šifrováním TLS.</source>
        <translation>Les mêmes données que dans l’app de l’iPhone. IMAP utilise le port 993 et SMTP le port 465, chiffrés par TLS.</translation>
    </message>
    <message>
        <source>Název účtu</source>
        <translation>Nom du compte</translation>
    </message>
    <message>
        <source>E-mailová adresa</source>
        <translation>Adresse e-mail</translation>
    </message>
    <message>
        <source>Jméno odesílatele</source>
        <translation>Nom de l’expéditeur</translation>
    </message>
    <message>
        <source>IMAP server</source>
        <translation>Serveur IMAP</translation>
    </message>
    <message>
        <source>SMTP server</source>
        <translation>Serveur SMTP</translation>
    </message>
    <message>
        <source>Heslo nebo heslo pro aplikaci</source>
        <translation>Mot de passe ou mot de passe d’application</translation>
    </message>
    <message>
        <source>Služby, které programům nedovolí heslo (Outlook, Microsoft 365), takhle připojit nejde.</source>
        <translation>Les services qui n’acceptent pas de mot de passe pour les programmes (Outlook, Microsoft 365) ne se connectent pas ainsi.</translation>
    </message>
    <message>
        <source>Morvex zde vidí jen účty přidané přímo do Apple Mailu.</source>
        <translation>Ici Morvex ne voit que les comptes ajoutés directement à Apple Mail.</translation>
    </message>
    <message>
        <source>Odstranit účet „%1“?</source>
        <translation>Supprimer le compte « %1 » ?</translation>
    </message>
    <message>
        <source>Odstraní se i jeho heslo. Pošta na serveru zůstane.</source>
        <translation>Son mot de passe est supprimé aussi. Le courrier reste sur le serveur.</translation>
    </message>
    <message>
        <source>Vybrat</source>
        <translation>Choisir</translation>
    </message>
    <message>
        <source>{stav}. Na místo upozorní zařízení, která seznam sdílejí, tento počítač ne.</source>
        <translation>{stav}. Les appareils qui partagent la liste préviennent à un lieu, cet ordinateur non.</translation>
    </message>
    <message>
        <source>Vybrat kalendáře</source>
        <translation>Choisir les calendriers</translation>
    </message>
    <message>
        <source>Morvex uvidí pouze označené kalendáře.</source>
        <translation>Morvex ne verra que les calendriers sélectionnés.</translation>
    </message>
    <message>
        <source>Jen pro čtení</source>
        <translation>Lecture seule</translation>
    </message>
    <message>
        <source>Výchozí pro nové události</source>
        <translation>Par défaut pour les nouveaux événements</translation>
    </message>
    <message>
        <source>Automaticky</source>
        <translation>Automatique</translation>
    </message>
    <message numerus="yes">
        <source>{pocet} kalendářů vybráno</source>
        <translation>
            <numerusform>{pocet} calendrier sélectionné</numerusform>
            <numerusform>{pocet} calendriers sélectionnés</numerusform>
        </translation>
    </message>
    <message>
        <source>Tahle verze to ještě neumí.</source>
        <translation>Cette version ne sait pas encore le faire.</translation>
    </message>
</context>
</TS>
