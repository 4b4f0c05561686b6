<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="cs">
<context>
    <name>Morvex</name>
    <message numerus="yes">
        <source>{pocet} povolených složek</source>
        <translation>
            <numerusform>{pocet} carpeta permitida</numerusform>
            <numerusform>{pocet} carpetas permitidas</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} připojeno</source>
        <translation>
            <numerusform>{pocet} conectada</numerusform>
            <numerusform>{pocet} conectadas</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} nástrojů</source>
        <translation>
            <numerusform>{pocet} herramienta</numerusform>
            <numerusform>{pocet} herramientas</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} synchronizováno</source>
        <translation>
            <numerusform>{pocet} sincronizada</numerusform>
            <numerusform>{pocet} sincronizadas</numerusform>
        </translation>
    </message>
    <message>
        <source>{nastroj} skončil chybou: {zprava}</source>
        <translation>{nastroj} terminó con un error: {zprava}</translation>
    </message>
    <message>
        <source>Adresa</source>
        <translation>Dirección</translation>
    </message>
    <message>
        <source>Adresa relaye nedává smysl.</source>
        <translation>La dirección del relay no tiene sentido.</translation>
    </message>
    <message>
        <source>Adresa relaye začíná https:// nebo http://. Napiš „{adresa}“.</source>
        <translation>La dirección de un relay empieza por https:// o http://. Escribe «{adresa}».</translation>
    </message>
    <message>
        <source>Adresa serveru není platná.</source>
        <translation>La dirección del servidor no es válida.</translation>
    </message>
    <message>
        <source>Adresa vlastní aplikace musí být platné HTTPS.</source>
        <translation>La dirección de la app propia debe ser HTTPS válido.</translation>
    </message>
    <message>
        <source>Apple Mail existuje jen v systému macOS.</source>
        <translation>Apple Mail solo existe en macOS.</translation>
    </message>
    <message>
        <source>Apple Mail neposkytl podporované automatizační rozhraní.</source>
        <translation>Apple Mail no ofrece una interfaz de automatización compatible.</translation>
    </message>
    <message>
        <source>Binárka nalezena, ale `--version` neodpovědělo. Zkontroluj instalaci.</source>
        <translation>Se ha encontrado el programa, pero `--version` no ha respondido. Comprueba la instalación.</translation>
    </message>
    <message>
        <source>Binárku „{binarka}“ jsem nenašel (prohledáno {pocet} adresářů). {napoveda}</source>
        <translation>No se ha encontrado el programa «{binarka}» ({pocet} carpetas revisadas). {napoveda}</translation>
    </message>
    <message>
        <source>Byl požadován nástroj {nastroj}, který tento Mac neumí.</source>
        <translation>Se ha pedido la herramienta {nastroj}, que este Mac no tiene.</translation>
    </message>
    <message>
        <source>Běží: %1</source>
        <translation>En curso: %1</translation>
    </message>
    <message>
        <source>Certifikát serveru je vydaný pro jinou adresu. Zkontroluj adresu serveru.</source>
        <translation>El certificado del servidor es de otra dirección. Comprueba la dirección del servidor.</translation>
    </message>
    <message>
        <source>Certifikát serveru ještě neplatí. Zkontroluj hodiny počítače.</source>
        <translation>El certificado del servidor aún no es válido. Comprueba el reloj del ordenador.</translation>
    </message>
    <message>
        <source>Certifikát serveru není v pořádku.</source>
        <translation>El certificado del servidor no está en orden.</translation>
    </message>
    <message>
        <source>Certifikát serveru nevydala autorita, které tento počítač věří. Certifikát vlastní autority ulož s příponou .crt do /usr/local/share/ca-certificates a spusť sudo update-ca-certificates.</source>
        <translation>El certificado del servidor no lo emitió una autoridad en la que este ordenador confíe. Guarda el certificado de tu propia autoridad con la extensión .crt en /usr/local/share/ca-certificates y ejecuta sudo update-ca-certificates.</translation>
    </message>
    <message>
        <source>Cesta {cesta} leží mimo povolené složky. Nesahám na ni.</source>
        <translation>La ruta {cesta} está fuera de las carpetas permitidas. No la toco.</translation>
    </message>
    <message>
        <source>Cesta vede mimo svou složku nebo na jiný disk.</source>
        <translation>La ruta sale de su carpeta o lleva a otro disco.</translation>
    </message>
    <message>
        <source>Cesta vede přes odkaz, který nejde sledovat.</source>
        <translation>La ruta pasa por un enlace que no se puede seguir.</translation>
    </message>
    <message>
        <source>Chybí k tomu oprávnění.</source>
        <translation>Falta el permiso para ello.</translation>
    </message>
    <message>
        <source>Chybí název nebo platný čas události.</source>
        <translation>Falta el nombre o una hora válida del evento.</translation>
    </message>
    <message>
        <source>Claude Code je nainstalovaný, ale přihlášení není platné nebo kontrola neodpověděla. V Terminálu spusť `claude auth login` a potom zde klikni na Zjistit znovu.</source>
        <translation>Claude Code está instalado, pero la sesión no es válida o la comprobación no ha respondido. Ejecuta `claude auth login` en una terminal y luego haz clic aquí en Buscar de nuevo.</translation>
    </message>
    <message>
        <source>Claude Code skončil chybou.</source>
        <translation>Claude Code ha terminado con un error.</translation>
    </message>
    <message>
        <source>Codex skončil chybou.</source>
        <translation>Codex ha terminado con un error.</translation>
    </message>
    <message>
        <source>Další pokus za {vterin} s</source>
        <translation>Próximo intento en {vterin} s</translation>
    </message>
    <message>
        <source>Disk je jen pro čtení.</source>
        <translation>El disco es de solo lectura.</translation>
    </message>
    <message>
        <source>Disk nebo jiné zařízení selhalo.</source>
        <translation>El disco u otro dispositivo ha fallado.</translation>
    </message>
    <message>
        <source>Doplň název vlastní aplikace.</source>
        <translation>Pon un nombre a la app propia.</translation>
    </message>
    <message>
        <source>Dostupnost</source>
        <translation>Disponibilidad</translation>
    </message>
    <message>
        <source>Historii úkolů se nepodařilo načíst: {duvod}</source>
        <translation>No se ha podido leer el historial de tareas: {duvod}</translation>
    </message>
    <message>
        <source>Historii úkolů se nepodařilo uložit: {duvod}</source>
        <translation>No se ha podido guardar el historial de tareas: {duvod}</translation>
    </message>
    <message>
        <source>Hlas na Macu</source>
        <translation>Voz en el Mac</translation>
    </message>
    <message>
        <source>Hlasový rozhovor tahle verze ještě neumí.</source>
        <translation>Esta versión todavía no sabe mantener una conversación por voz.</translation>
    </message>
    <message>
        <source>Hlavička požadavku je příliš dlouhá.</source>
        <translation>La cabecera de la petición es demasiado larga.</translation>
    </message>
    <message>
        <source>Hlavička požadavku má neplatné znaky.</source>
        <translation>La cabecera de la petición tiene caracteres no válidos.</translation>
    </message>
    <message>
        <source>Hledání místa selhalo.</source>
        <translation>La búsqueda del lugar falló.</translation>
    </message>
    <message>
        <source>Hotovo</source>
        <translation>Listo</translation>
    </message>
    <message>
        <source>Identita zprávy nebo požadavku obsahuje svislou čáru.</source>
        <translation>La identidad del mensaje o de la petición contiene una barra vertical.</translation>
    </message>
    <message>
        <source>Identifikátor</source>
        <translation>Identificador</translation>
    </message>
    <message>
        <source>Integrace</source>
        <translation>Integraciones</translation>
    </message>
    <message>
        <source>Invalid number of keys found, expected one.</source>
        <translation>El mensaje debería tener exactamente un caso.</translation>
    </message>
    <message>
        <source>Jazyk aplikace a asistentky</source>
        <translation>Idioma de la app y de la asistente</translation>
    </message>
    <message>
        <source>Jednorázové číslo zprávy má špatnou délku.</source>
        <translation>El número único del mensaje tiene una longitud incorrecta.</translation>
    </message>
    <message>
        <source>Jméno nebo cesta je příliš dlouhá.</source>
        <translation>El nombre o la ruta es demasiado largo.</translation>
    </message>
    <message>
        <source>Jméno serveru síť nezná. Zkontroluj adresu a připojení k síti.</source>
        <translation>La red no conoce el nombre del servidor. Comprueba la dirección y la conexión a la red.</translation>
    </message>
    <message>
        <source>Jméno už je obsazené.</source>
        <translation>El nombre ya está ocupado.</translation>
    </message>
    <message>
        <source>K serveru nevede cesta. Zkontroluj připojení k síti.</source>
        <translation>No hay camino hasta el servidor. Comprueba la conexión a la red.</translation>
    </message>
    <message>
        <source>Kalendář</source>
        <translation>Calendario</translation>
    </message>
    <message>
        <source>Kalendář je povolený pouze pro zápis</source>
        <translation>El calendario solo está permitido para escribir</translation>
    </message>
    <message>
        <source>Kalendář je připojený</source>
        <translation>El calendario está conectado</translation>
    </message>
    <message>
        <source>Kalendář čeká na povolení</source>
        <translation>El calendario espera el permiso</translation>
    </message>
    <message>
        <source>Když se čísla liší, nepotvrzuj. Znamená to, že mezi telefonem a Macem někdo je.</source>
        <translation>Si los números son distintos, no confirmes. Significa que hay alguien entre el teléfono y el Mac.</translation>
    </message>
    <message>
        <source>Keychain error {stav}</source>
        <translation>Error del llavero {stav}</translation>
    </message>
    <message>
        <source>Kliknutím zkopíruješ text kódu.</source>
        <translation>Un clic copia el texto del código.</translation>
    </message>
    <message>
        <source>Klávesová zkratka pro hlas</source>
        <translation>Atajo de teclado para la voz</translation>
    </message>
    <message>
        <source>Klíč má mít {ocekavano} bajtů, má jich {dostal}.</source>
        <translation>La clave debe tener {ocekavano} bytes y tiene {dostal}.</translation>
    </message>
    <message>
        <source>Klíč pro spojení nejde odvodit: {duvod}</source>
        <translation>No se puede derivar la clave de la conexión: {duvod}</translation>
    </message>
    <message>
        <source>Klíč telefonu nejde použít: {duvod}</source>
        <translation>La clave del teléfono no se puede usar: {duvod}</translation>
    </message>
    <message>
        <source>Klíče leží v souborech, které smí číst jen tvůj účet, protože tu není klíčenka.</source>
        <translation>Las claves están en archivos que solo tu cuenta puede leer, porque aquí no hay llavero.</translation>
    </message>
    <message>
        <source>Klíčenka zůstala zamčená.</source>
        <translation>El llavero sigue bloqueado.</translation>
    </message>
    <message>
        <source>Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí.</source>
        <translation>El llavero sigue bloqueado. Contiene las claves de este ordenador; sin ellas el teléfono no puede conectarse.</translation>
    </message>
    <message>
        <source>Kontakty</source>
        <translation>Contactos</translation>
    </message>
    <message>
        <source>Kontakty jsou připojené</source>
        <translation>Los contactos están conectados</translation>
    </message>
    <message>
        <source>Kontakty čekají na povolení</source>
        <translation>Los contactos esperan el permiso</translation>
    </message>
    <message>
        <source>Kopírovat</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Kryptografická knihovna selhala.</source>
        <translation>La biblioteca criptográfica ha fallado.</translation>
    </message>
    <message>
        <source>Kód platí do %1. Po vypršení si nech zobrazit nový — krátká platnost je záměr.</source>
        <translation>El código vale hasta las %1. Después pide uno nuevo — la validez corta es intencionada.</translation>
    </message>
    <message>
        <source>Mac není dostupný.</source>
        <translation>El Mac no está disponible.</translation>
    </message>
    <message>
        <source>Mac právě pracuje: {cim}.</source>
        <translation>El Mac está ocupado: {cim}.</translation>
    </message>
    <message>
        <source>Mac spí</source>
        <translation>El Mac duerme</translation>
    </message>
    <message>
        <source>Mail neodpověděl včas. Zkus menší počet zpráv.</source>
        <translation>Mail no respondió a tiempo. Prueba con menos mensajes.</translation>
    </message>
    <message>
        <source>Mail operaci odmítl.</source>
        <translation>Mail rechazó la operación.</translation>
    </message>
    <message>
        <source>Mail vrátil něco, čemu nerozumím.</source>
        <translation>Mail devolvió algo que no entiendo.</translation>
    </message>
    <message>
        <source>Mluvit bez držení</source>
        <translation>Hablar con manos libres</translation>
    </message>
    <message>
        <source>Morvex běží bez systémového sandboxu, protože pouští tvoje vlastní programy a pracuje v tvých složkách. Přístup k souborům hlídá seznam povolených složek.</source>
        <translation>Morvex funciona sin el sandbox del sistema, porque inicia tus propios programas y trabaja en tus carpetas. El acceso a los archivos lo vigila la lista de carpetas permitidas.</translation>
    </message>
    <message>
        <source>Morvex nemá plný přístup ke kalendářům na tomto Macu. Povol ho v okně Morvex nebo v Nastavení systému → Soukromí a zabezpečení → Kalendáře.</source>
        <translation>Morvex no tiene acceso completo a los calendarios de este Mac. Permítelo en la ventana de Morvex o en Ajustes del Sistema → Privacidad y seguridad → Calendarios.</translation>
    </message>
    <message>
        <source>Morvex nemá přístup k připomínkám tohoto Macu.</source>
        <translation>Morvex no tiene acceso a los recordatorios de este Mac.</translation>
    </message>
    <message>
        <source>Morvex nemá přístup ke kontaktům tohoto Macu.</source>
        <translation>Morvex no tiene acceso a los contactos de este Mac.</translation>
    </message>
    <message>
        <source>Místo pro polohovou připomínku se nepodařilo najít.</source>
        <translation>No se pudo encontrar el lugar para el recordatorio por ubicación.</translation>
    </message>
    <message>
        <source>Na Macu není dostupný seznam připomínek pro zápis.</source>
        <translation>En el Mac no hay disponible ninguna lista de recordatorios en la que se pueda escribir.</translation>
    </message>
    <message>
        <source>Na Macu není kalendář, do kterého lze zapisovat.</source>
        <translation>En el Mac no hay ningún calendario en el que se pueda escribir.</translation>
    </message>
    <message>
        <source>Na baterii Mac usne bez ohledu na tohle nastavení. Bránit spánku bez napájení by ti vybilo notebook v tašce.</source>
        <translation>Con batería el Mac se duerme diga lo que diga este ajuste. Impedir el reposo sin corriente agotaría el portátil en tu bolsa.</translation>
    </message>
    <message>
        <source>Na baterii usne — držení vzhůru platí jen při napájení</source>
        <translation>Con batería se duerme — solo se mantiene despierto con corriente</translation>
    </message>
    <message>
        <source>Poštovní účet „{nazev}“ není v Morvex povolený.</source>
        <translation>La cuenta de correo «{nazev}» no está permitida en Morvex.</translation>
    </message>
    <message>
        <source>Připomínku jsem nenašel.</source>
        <translation>No he encontrado el recordatorio.</translation>
    </message>
    <message>
        <source>Připomínky jsou povolené pouze pro zápis</source>
        <translation>Los recordatorios solo están permitidos para escribir</translation>
    </message>
    <message>
        <source>Připomínky jsou připojené</source>
        <translation>Los recordatorios están conectados</translation>
    </message>
    <message>
        <source>Připomínky čekají na povolení</source>
        <translation>Los recordatorios esperan el permiso</translation>
    </message>
    <message>
        <source>Přístup k připomínkám byl zamítnut</source>
        <translation>Se denegó el acceso a los recordatorios</translation>
    </message>
    <message>
        <source>Přístup k připomínkám je systémem omezený</source>
        <translation>El acceso a los recordatorios está restringido por el sistema</translation>
    </message>
    <message>
        <source>Přístup ke kalendáři byl zamítnut</source>
        <translation>Se denegó el acceso al calendario</translation>
    </message>
    <message>
        <source>Přístup ke kalendáři je systémem omezený</source>
        <translation>El acceso al calendario está restringido por el sistema</translation>
    </message>
    <message>
        <source>Přístup ke kontaktům byl zamítnut</source>
        <translation>Se denegó el acceso a los contactos</translation>
    </message>
    <message>
        <source>Přístup ke kontaktům je systémem omezený</source>
        <translation>El acceso a los contactos está restringido por el sistema</translation>
    </message>
    <message>
        <source>Soubor s ním při startu nešel přečíst. Ukonči Morvex a spusť ho znovu.</source>
        <translation>El archivo no se pudo leer al iniciar. Cierra Morvex y vuelve a abrirlo.</translation>
    </message>
    <message>
        <source>Stav kalendáře není známý</source>
        <translation>No se conoce el estado del calendario</translation>
    </message>
    <message>
        <source>Stav kontaktů není známý</source>
        <translation>No se conoce el estado de los contactos</translation>
    </message>
    <message>
        <source>Stav připomínek není známý</source>
        <translation>No se conoce el estado de los recordatorios</translation>
    </message>
    <message>
        <source>Systémová služba neodpověděla včas.</source>
        <translation>El servicio del sistema no respondió a tiempo.</translation>
    </message>
    <message>
        <source>Tento kalendář není v Morvex povolený.</source>
        <translation>Este calendario no está permitido en Morvex.</translation>
    </message>
    <message>
        <source>Tento počítač nemá službu kalendářů, připomínek a kontaktů.</source>
        <translation>Este ordenador no tiene ningún servicio de calendarios, recordatorios y contactos.</translation>
    </message>
    <message>
        <source>Událost už v kalendáři nemohu najít.</source>
        <translation>Ya no encuentro el evento en el calendario.</translation>
    </message>
    <message>
        <source>Vybraný kalendář je pouze pro čtení.</source>
        <translation>El calendario elegido es de solo lectura.</translation>
    </message>
    <message>
        <source>Zrušené párování se nepodařilo smazat: {duvod}</source>
        <translation>No se pudo eliminar la vinculación cancelada: {duvod}</translation>
    </message>
    <message>
        <source>Odpojení telefonu se nepodařilo uložit: {duvod}</source>
        <translation>No se pudo guardar la desvinculación del teléfono: {duvod}</translation>
    </message>
    <message>
        <source>Na disku není místo.</source>
        <translation>No queda espacio en el disco.</translation>
    </message>
    <message>
        <source>Na tomto počítači taková služba neběží.</source>
        <translation>En este ordenador no funciona ese servicio.</translation>
    </message>
    <message>
        <source>Na této cestě je složka.</source>
        <translation>En esta ruta hay una carpeta.</translation>
    </message>
    <message>
        <source>Nahrát vlastní zkratku</source>
        <translation>Grabar un atajo propio</translation>
    </message>
    <message>
        <source>Nainstalováno</source>
        <translation>Instalado</translation>
    </message>
    <message>
        <source>Nainstaluj: npm i -g @openai/codex (nebo brew install codex). Codex ve webovém ChatGPT ani rozšíření do editoru žádné CLI neinstalují.</source>
        <translation>Instálalo: npm i -g @openai/codex (o brew install codex). Ni Codex en la web de ChatGPT ni las extensiones del editor instalan un CLI.</translation>
    </message>
    <message>
        <source>Nastavení se mezitím změnilo.</source>
        <translation>Los ajustes cambiaron mientras tanto.</translation>
    </message>
    <message>
        <source>Nastavení se nepodařilo uložit: {duvod}</source>
        <translation>No se pudieron guardar los ajustes: {duvod}</translation>
    </message>
    <message>
        <source>Načti tento kód v aplikaci Morvex na telefonu.</source>
        <translation>Escanea este código en la app Morvex del teléfono.</translation>
    </message>
    <message>
        <source>Nejde to přečíst jako base64.</source>
        <translation>No se puede leer como base64.</translation>
    </message>
    <message>
        <source>Nenainstalováno</source>
        <translation>No instalado</translation>
    </message>
    <message>
        <source>Nepodařilo se spustit: {duvod}</source>
        <translation>No se ha podido iniciar: {duvod}</translation>
    </message>
    <message>
        <source>Neshoduje se</source>
        <translation>No coincide</translation>
    </message>
    <message>
        <source>Nespárováno</source>
        <translation>Sin vincular</translation>
    </message>
    <message>
        <source>Neznámý druh rámce.</source>
        <translation>Tipo de trama desconocido.</translation>
    </message>
    <message>
        <source>Neznámý nástroj.</source>
        <translation>Herramienta desconocida.</translation>
    </message>
    <message>
        <source>Nečekaná odpověď na přihlášení.</source>
        <translation>Respuesta inesperada al iniciar la sesión.</translation>
    </message>
    <message>
        <source>Nový token — ponech prázdné beze změny</source>
        <translation>Token nuevo — déjalo vacío para conservar el actual</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není na Macu k dispozici: {duvod}</source>
        <translation>La herramienta {nastroj} no está disponible en el Mac: {duvod}</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není nainstalovaný.</source>
        <translation>La herramienta {nastroj} no está instalada.</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} není povolený: {duvod}</source>
        <translation>La herramienta {nastroj} no está permitida: {duvod}</translation>
    </message>
    <message>
        <source>Nástroj {nastroj} neznám.</source>
        <translation>La herramienta {nastroj} es desconocida.</translation>
    </message>
    <message>
        <source>Nástroj nevrátil žádný text.</source>
        <translation>La herramienta no devolvió ningún texto.</translation>
    </message>
    <message>
        <source>Nástroje Macu</source>
        <translation>Herramientas del Mac</translation>
    </message>
    <message>
        <source>Název</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>O aplikaci</source>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>Obnovit stav</source>
        <translation>Actualizar estado</translation>
    </message>
    <message>
        <source>Obálka je od jiného zařízení.</source>
        <translation>El sobre es de otro dispositivo.</translation>
    </message>
    <message>
        <source>Obálka není pro mě.</source>
        <translation>El sobre no es para mí.</translation>
    </message>
    <message>
        <source>Obálka patří jinému páru.</source>
        <translation>El sobre pertenece a otro par.</translation>
    </message>
    <message>
        <source>Odebere se i její token. Asistentka pak její nástroje nebude mít.</source>
        <translation>También se quita su token. La asistente ya no tendrá sus herramientas.</translation>
    </message>
    <message>
        <source>Odebrat</source>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Odebrat aplikaci „%1“?</source>
        <translation>¿Quitar la app «%1»?</translation>
    </message>
    <message>
        <source>Odpojit</source>
        <translation>Desvincular</translation>
    </message>
    <message>
        <source>Odpojit telefon</source>
        <translation>Desvincular el teléfono</translation>
    </message>
    <message>
        <source>Odpojit telefon?</source>
        <translation>¿Desvincular el teléfono?</translation>
    </message>
    <message>
        <source>Odpověď serveru je příliš dlouhá.</source>
        <translation>La respuesta del servidor es demasiado larga.</translation>
    </message>
    <message>
        <source>OpenAI klíč bezpečně převzat z iPhonu</source>
        <translation>Clave de OpenAI recibida del iPhone de forma segura</translation>
    </message>
    <message>
        <source>Operace překročila limit {vterin} vteřin a byla zastavena.</source>
        <translation>La operación ha superado el límite de {vterin} segundos y se ha detenido.</translation>
    </message>
    <message>
        <source>Operace skončila dřív, než dala výsledek.</source>
        <translation>La operación terminó antes de dar un resultado.</translation>
    </message>
    <message>
        <source>Oprávnění ke složce {slozka} se nepodařilo uložit: {duvod}</source>
        <translation>No se ha podido guardar el permiso de la carpeta {slozka}: {duvod}</translation>
    </message>
    <message>
        <source>Osobní data</source>
        <translation>Datos personales</translation>
    </message>
    <message>
        <source>Otevřít nastavení</source>
        <translation>Abrir ajustes</translation>
    </message>
    <message>
        <source>Otisk klíče nesedí.</source>
        <translation>La huella de la clave no encaja.</translation>
    </message>
    <message>
        <source>Ověřovací značka zprávy má špatnou délku.</source>
        <translation>La etiqueta de autenticación del mensaje tiene una longitud incorrecta.</translation>
    </message>
    <message>
        <source>Platnost certifikátu serveru skončila. Zkontroluj hodiny počítače, nebo na serveru certifikát obnov.</source>
        <translation>El certificado del servidor ha caducado. Comprueba el reloj del ordenador o renueva el certificado en el servidor.</translation>
    </message>
    <message>
        <source>Po chvíli nečinnosti usne a přestane být dostupný</source>
        <translation>Se duerme tras un rato sin uso y deja de estar disponible</translation>
    </message>
    <message>
        <source>Podle iPhonu</source>
        <translation>Como en el iPhone</translation>
    </message>
    <message>
        <source>Podpis zprávy nesedí. Spojení jsem zahodil.</source>
        <translation>La firma del mensaje no encaja. He descartado la conexión.</translation>
    </message>
    <message>
        <source>Pokračovat v Claude</source>
        <translation>Continuar en Claude</translation>
    </message>
    <message>
        <source>Pokračovat v Codexu</source>
        <translation>Continuar en Codex</translation>
    </message>
    <message>
        <source>Pole „{pole}“ chybí.</source>
        <translation>Falta el campo «{pole}».</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má neznámou hodnotu „{hodnota}“.</source>
        <translation>El campo «{pole}» tiene el valor desconocido «{hodnota}».</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má neznámý druh „{druh}“.</source>
        <translation>El campo «{pole}» es del tipo desconocido «{druh}».</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má nečitelnou hodnotu „{hodnota}“.</source>
        <translation>El valor «{hodnota}» del campo «{pole}» no se puede leer.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má číslo mimo rozsah.</source>
        <translation>El número del campo «{pole}» está fuera de rango.</translation>
    </message>
    <message>
        <source>Pole „{pole}“ má špatný typ ({typ}).</source>
        <translation>El campo «{pole}» tiene un tipo erróneo ({typ}).</translation>
    </message>
    <message>
        <source>Poslední změnu z telefonu se nepodařilo uložit: {duvod}</source>
        <translation>No se pudo guardar el último cambio del teléfono: {duvod}</translation>
    </message>
    <message>
        <source>Poslední úkoly</source>
        <translation>Tareas recientes</translation>
    </message>
    <message>
        <source>Potvrdit</source>
        <translation>Confirmar</translation>
    </message>
    <message>
        <source>Potvrdit můžeš tady i hlasem na telefonu. Bez potvrzení se neprovede nic — ani po vypršení.</source>
        <translation>Puedes confirmar aquí o por voz en el teléfono. Sin confirmación no se hace nada — tampoco tras caducar.</translation>
    </message>
    <message>
        <source>Potvrzeno %1</source>
        <translation>Confirmado el %1</translation>
    </message>
    <message>
        <source>Povolené složky</source>
        <translation>Carpetas permitidas</translation>
    </message>
    <message>
        <source>Povolit</source>
        <translation>Permitir</translation>
    </message>
    <message>
        <source>Povolit akci na Macu</source>
        <translation>Permitir una acción en el Mac</translation>
    </message>
    <message>
        <source>Povolit složku %1?</source>
        <translation>¿Permitir la carpeta %1?</translation>
    </message>
    <message>
        <source>Poznámka „{nazev}“ je na přenos příliš dlouhá, telefon ji nedostane.</source>
        <translation>La nota «{nazev}» es demasiado larga para enviarla; el teléfono no la recibirá.</translation>
    </message>
    <message>
        <source>Poznámky Morvex</source>
        <translation>Notas de Morvex</translation>
    </message>
    <message>
        <source>Poznámky vytvořené na iPhonu se po zabezpečeném spojení objeví tady a zůstanou dostupné i offline.</source>
        <translation>Las notas creadas en el iPhone aparecen aquí cuando la conexión está protegida y siguen disponibles sin conexión.</translation>
    </message>
    <message>
        <source>Počítač se nepodařilo udržet vzhůru: {duvod}</source>
        <translation>No se ha podido mantener despierto el ordenador: {duvod}</translation>
    </message>
    <message>
        <source>Počítači došla paměť nebo už nemůže mít víc otevřených souborů a procesů.</source>
        <translation>Al ordenador le falta memoria, archivos abiertos o procesos.</translation>
    </message>
    <message>
        <source>Pracuje</source>
        <translation>Trabajando</translation>
    </message>
    <message>
        <source>Pracuje: {cim}</source>
        <translation>Ocupado: {cim}</translation>
    </message>
    <message>
        <source>Pravidelné souhrny vytvořené na iPhonu se objeví tady a zůstanou dostupné i offline.</source>
        <translation>Los resúmenes periódicos creados en el iPhone aparecen aquí y siguen disponibles sin conexión.</translation>
    </message>
    <message>
        <source>Proces skončil s kódem {kod}.</source>
        <translation>El proceso terminó con el código {kod}.</translation>
    </message>
    <message>
        <source>Protějšek poslal představení, kterému nerozumím.</source>
        <translation>El otro lado ha enviado una presentación que no entiendo.</translation>
    </message>
    <message>
        <source>Právě to používá jiný program.</source>
        <translation>Otro programa lo está usando ahora.</translation>
    </message>
    <message>
        <source>Prázdné zadání.</source>
        <translation>La tarea está vacía.</translation>
    </message>
    <message>
        <source>Párování neplatí — {duvod}</source>
        <translation>La vinculación no es válida — {duvod}</translation>
    </message>
    <message>
        <source>Párování s telefonem</source>
        <translation>Vinculación con un teléfono</translation>
    </message>
    <message>
        <source>Párování se nepodařilo uložit: {duvod}</source>
        <translation>No se ha podido guardar la vinculación: {duvod}</translation>
    </message>
    <message>
        <source>Představení protějšku má neplatný podpis. Spojení nešifruju.</source>
        <translation>La presentación del otro lado tiene una firma no válida. No cifro la conexión.</translation>
    </message>
    <message>
        <source>Představení telefonu má neplatný podpis. Nic jsem neuložil.</source>
        <translation>La presentación del teléfono tiene una firma no válida. No he guardado nada.</translation>
    </message>
    <message>
        <source>Přerušeno</source>
        <translation>Interrumpida</translation>
    </message>
    <message>
        <source>Při napájení udržovat Morvex dostupný</source>
        <translation>Mantener Morvex disponible con corriente</translation>
    </message>
    <message>
        <source>Přidat aplikaci</source>
        <translation>Añadir app</translation>
    </message>
    <message>
        <source>Přidat nebo obnovit složku</source>
        <translation>Añadir o renovar carpeta</translation>
    </message>
    <message>
        <source>Přidat složku jde jen odsud. Telefon ani asistentka seznam rozšířit nemůžou.</source>
        <translation>Las carpetas solo se añaden aquí. Ni el teléfono ni la asistente pueden ampliar la lista.</translation>
    </message>
    <message>
        <source>Přidat vlastní aplikaci</source>
        <translation>Añadir app propia</translation>
    </message>
    <message>
        <source>Přidej první aplikaci tady nebo ji synchronizuj z iPhonu.</source>
        <translation>Añade la primera app aquí o sincronízala desde el iPhone.</translation>
    </message>
    <message>
        <source>Přidáno na Macu</source>
        <translation>Añadida en el Mac</translation>
    </message>
    <message>
        <source>Přihlašovací služba systému to nezařídila: {duvod}</source>
        <translation>El servicio de sesión del sistema no lo ha hecho: {duvod}</translation>
    </message>
    <message>
        <source>Přihlášení Claude Code selhalo. V Terminálu spusť `claude auth login` a potom v aplikaci klikni na Zjistit znovu.</source>
        <translation>Ha fallado el inicio de sesión de Claude Code. Ejecuta `claude auth login` en una terminal y luego haz clic en la app en Buscar de nuevo.</translation>
    </message>
    <message>
        <source>Připoj vlastní MCP službu přes zabezpečenou HTTPS adresu.</source>
        <translation>Conecta un servicio MCP propio en una dirección HTTPS segura.</translation>
    </message>
    <message>
        <source>Připojuji…</source>
        <translation>Conectando…</translation>
    </message>
    <message>
        <source>Připojuji… ({cislo}. pokus)</source>
        <translation>Conectando… (intento {cislo})</translation>
    </message>
    <message>
        <source>Připomínky</source>
        <translation>Recordatorios</translation>
    </message>
    <message>
        <source>Připraven</source>
        <translation>Preparado</translation>
    </message>
    <message>
        <source>Přístupový token — volitelný</source>
        <translation>Token de acceso — opcional</translation>
    </message>
    <message>
        <source>QR kód</source>
        <translation>Código QR</translation>
    </message>
    <message>
        <source>QR kód se nepodařilo vykreslit.</source>
        <translation>No se ha podido dibujar el código QR.</translation>
    </message>
    <message>
        <source>Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aktuální aplikace Claude.</source>
        <translation>No se ha podido abrir la sesión. Comprueba que está instalada la app actual de Claude.</translation>
    </message>
    <message>
        <source>Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aplikace Codex.</source>
        <translation>No se ha podido abrir la sesión. Comprueba que está instalada la app de Codex.</translation>
    </message>
    <message>
        <source>Relay</source>
        <translation>Relay</translation>
    </message>
    <message>
        <source>Relay neodpověděl.</source>
        <translation>El relay no ha respondido.</translation>
    </message>
    <message>
        <source>Relay neposlal výzvu.</source>
        <translation>El relay no ha enviado el desafío.</translation>
    </message>
    <message>
        <source>Relay odmítl požadavek ({stav}).</source>
        <translation>El relay rechazó la petición ({stav}).</translation>
    </message>
    <message>
        <source>Server odmítl WebSocket (HTTP {stav}).</source>
        <translation>El servidor ha rechazado el WebSocket (HTTP {stav}).</translation>
    </message>
    <message>
        <source>Server odpověděl nesrozumitelně.</source>
        <translation>La respuesta del servidor no se entiende.</translation>
    </message>
    <message>
        <source>Server se neozval včas.</source>
        <translation>El servidor no ha respondido a tiempo.</translation>
    </message>
    <message>
        <source>Server spojení odmítl. Nejspíš neběží, nebo má jiný port, než je v adrese.</source>
        <translation>El servidor rechazó la conexión. Probablemente no está en marcha o tiene otro puerto que la dirección.</translation>
    </message>
    <message>
        <source>Server ukončil spojení (kód {kod}).</source>
        <translation>El servidor ha terminado la conexión (código {kod}).</translation>
    </message>
    <message>
        <source>Server spojení ukončil.</source>
        <translation>El servidor ha terminado la conexión.</translation>
    </message>
    <message>
        <source>Spojení s poštovním serverem selhalo: {potiz}</source>
        <translation>La conexión con el servidor de correo ha fallado: {potiz}</translation>
    </message>
    <message>
        <source>Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.</source>
        <translation>El servidor ha rechazado el inicio de sesión. Comprueba la dirección y la contraseña o la contraseña de aplicación.</translation>
    </message>
    <message>
        <source>E-mailová adresa není platná.</source>
        <translation>La dirección de correo electrónico no es válida.</translation>
    </message>
    <message>
        <source>Spojení bylo zrušeno.</source>
        <translation>La conexión se ha cancelado.</translation>
    </message>
    <message>
        <source>Server se do 15 sekund nepřipojil.</source>
        <translation>El servidor no se ha conectado en 15 segundos.</translation>
    </message>
    <message>
        <source>Server nepřijal data.</source>
        <translation>El servidor no ha aceptado los datos.</translation>
    </message>
    <message>
        <source>Server neodpověděl.</source>
        <translation>El servidor no ha respondido.</translation>
    </message>
    <message>
        <source>Server odpověděl: {odpoved}</source>
        <translation>El servidor ha respondido: {odpoved}</translation>
    </message>
    <message>
        <source>Nesrozumitelná odpověď SMTP serveru.</source>
        <translation>La respuesta del servidor SMTP es incomprensible.</translation>
    </message>
    <message>
        <source>SMTP server odpověděl: {odpoved}</source>
        <translation>El servidor SMTP ha respondido: {odpoved}</translation>
    </message>
    <message>
        <source>K serveru {server} se nepodařilo připojit: {potiz}</source>
        <translation>No se ha podido conectar con el servidor {server}: {potiz}</translation>
    </message>
    <message>
        <source>Spojení nestíhá odesílat.</source>
        <translation>La conexión no da abasto para enviar.</translation>
    </message>
    <message>
        <source>Seznam autorit, kterým tento počítač věří, nejde přečíst.</source>
        <translation>La lista de autoridades en las que este ordenador confía no se puede leer.</translation>
    </message>
    <message>
        <source>Skončilo chybou</source>
        <translation>Ha fallado</translation>
    </message>
    <message>
        <source>Složka {cesta} neexistuje.</source>
        <translation>La carpeta {cesta} no existe.</translation>
    </message>
    <message>
        <source>Složka {cesta} už není povolená.</source>
        <translation>La carpeta {cesta} ya no está permitida.</translation>
    </message>
    <message>
        <source>Složku s daty „{slozka}“ nejde použít: {duvod}</source>
        <translation>La carpeta de datos «{slozka}» no se puede usar: {duvod}</translation>
    </message>
    <message>
        <source>Služba počítače se neozvala včas.</source>
        <translation>El servicio del ordenador no respondió a tiempo.</translation>
    </message>
    <message>
        <source>Soubor je příliš velký.</source>
        <translation>El archivo es demasiado grande.</translation>
    </message>
    <message>
        <source>Soubor nebo složka neexistuje.</source>
        <translation>El archivo o la carpeta no existe.</translation>
    </message>
    <message>
        <source>Soubor není program pro tento počítač.</source>
        <translation>El archivo no es un programa para este ordenador.</translation>
    </message>
    <message>
        <source>Soubor s nastavením byl poškozený; je odložený jako {soubor}</source>
        <translation>El archivo de ajustes estaba dañado; se ha apartado como {soubor}</translation>
    </message>
    <message>
        <source>Soubor s nastavením je poškozený a nejde odložit: {duvod}</source>
        <translation>El archivo de ajustes está dañado y no se puede apartar: {duvod}</translation>
    </message>
    <message>
        <source>Soubor s nastavením nejde přečíst: {duvod}</source>
        <translation>No se puede leer el archivo de ajustes: {duvod}</translation>
    </message>
    <message>
        <source>Soubory</source>
        <translation>Archivos</translation>
    </message>
    <message>
        <source>Souhlasí</source>
        <translation>Coincide</translation>
    </message>
    <message>
        <source>Souhrny Morvex</source>
        <translation>Resúmenes de Morvex</translation>
    </message>
    <message>
        <source>Spojení</source>
        <translation>Conexión</translation>
    </message>
    <message>
        <source>Spojení bylo uzavřeno.</source>
        <translation>La conexión se ha cerrado.</translation>
    </message>
    <message>
        <source>Spojení je zavřené.</source>
        <translation>La conexión está cerrada.</translation>
    </message>
    <message>
        <source>Spojení přerušeno — {duvod}</source>
        <translation>Conexión interrumpida — {duvod}</translation>
    </message>
    <message>
        <source>Spojení se přerušilo.</source>
        <translation>La conexión se cortó.</translation>
    </message>
    <message>
        <source>Spouští příkazy v povolených složkách a umí spustit jakýkoli kód</source>
        <translation>Ejecuta órdenes en carpetas permitidas y puede ejecutar cualquier código</translation>
    </message>
    <message>
        <source>Spouštění po přihlášení se nepodařilo nastavit: {duvod}</source>
        <translation>No se ha podido ajustar el inicio con la sesión: {duvod}</translation>
    </message>
    <message>
        <source>Spouštět po přihlášení</source>
        <translation>Abrir al iniciar sesión</translation>
    </message>
    <message>
        <source>Spravovat</source>
        <translation>Gestionar</translation>
    </message>
    <message>
        <source>Spárovaný telefon</source>
        <translation>Teléfono vinculado</translation>
    </message>
    <message>
        <source>Spárovat jiný telefon</source>
        <translation>Vincular otro teléfono</translation>
    </message>
    <message>
        <source>Stav se nepodařilo odeslat: {duvod}</source>
        <translation>No se ha podido enviar el estado: {duvod}</translation>
    </message>
    <message>
        <source>Synchronizováno z iPhonu</source>
        <translation>Sincronizada desde el iPhone</translation>
    </message>
    <message>
        <source>Adresa relaye vede jen na tento počítač. Jiné zařízení se přes ni nepřipojí.</source>
        <translation>La dirección del relay solo lleva a este ordenador. Ningún otro dispositivo puede conectarse por ella.</translation>
    </message>
    <message>
        <source>Systém ohlásil chybu, kterou neznám.</source>
        <translation>El sistema comunicó un error que no conozco.</translation>
    </message>
    <message>
        <source>Takovou cestu nejde použít.</source>
        <translation>Una ruta así no se puede usar.</translation>
    </message>
    <message>
        <source>Telefon</source>
        <translation>Teléfono</translation>
    </message>
    <message>
        <source>Telefon a Mac mluví jinou verzí protokolu ({moje} proti {jeho}). Aktualizuj tu starší aplikaci.</source>
        <translation>El teléfono y el Mac hablan versiones distintas del protocolo ({moje} frente a {jeho}). Actualiza la app más antigua.</translation>
    </message>
    <message>
        <source>Telefon mezitím odešel. Pokud párování vzdal, nepřipojí se a je potřeba ho spárovat znovu.</source>
        <translation>El teléfono se ha ido entretanto. Si abandonó el emparejamiento, no se conectará y habrá que emparejarlo de nuevo.</translation>
    </message>
    <message>
        <source>Telefon není připojený</source>
        <translation>El teléfono no está conectado</translation>
    </message>
    <message>
        <source>Telefon poslal nekompatibilní párovací zprávu: {duvod}</source>
        <translation>El teléfono ha enviado un mensaje de vinculación incompatible: {duvod}</translation>
    </message>
    <message>
        <source>Telefon se ozval. Shoduje se tohle číslo s tím na jeho obrazovce?</source>
        <translation>El teléfono ha respondido. ¿Es este número igual que el de su pantalla?</translation>
    </message>
    <message>
        <source>Telefon spí ({minut} min)</source>
        <translation>El teléfono duerme ({minut} min)</translation>
    </message>
    <message>
        <source>Telefon tenhle Mac přestane vidět. Aby se k němu zase dostal, budeš ho muset znovu spárovat.</source>
        <translation>El teléfono dejará de ver este Mac. Para que vuelva a verlo, tendrás que vincularlo de nuevo.</translation>
    </message>
    <message>
        <source>Tento systém nebo disk to neumí.</source>
        <translation>Este sistema o disco no puede hacerlo.</translation>
    </message>
    <message>
        <source>Tento úkol ještě nemá relaci, ve které by šlo pokračovat.</source>
        <translation>Esta tarea todavía no tiene una sesión en la que continuar.</translation>
    </message>
    <message>
        <source>Terminál</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Text kódu je zkopírovaný.</source>
        <translation>El texto del código está copiado.</translation>
    </message>
    <message>
        <source>To je celý disk: telefon se pak dostane ke všemu, k čemu se tu dostaneš ty.</source>
        <translation>Es el disco entero: el teléfono llegará a todo lo que tú alcanzas aquí.</translation>
    </message>
    <message>
        <source>To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům.</source>
        <translation>Es tu carpeta personal: el teléfono llegará a todos tus archivos.</translation>
    </message>
    <message>
        <source>Tohle potřebuje potvrzení: {co}</source>
        <translation>Esto necesita confirmación: {co}</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message>
        <source>Token se ukládá pouze do Keychainu tohoto Macu.</source>
        <translation>El token se guarda solo en el llavero de este Mac.</translation>
    </message>
    <message>
        <source>Trezor odmítl mazání {ucet}: {duvod}</source>
        <translation>El almacén rechazó borrar {ucet}: {duvod}</translation>
    </message>
    <message>
        <source>Trezor odmítl zápis {ucet}: {duvod}</source>
        <translation>El almacén rechazó escribir {ucet}: {duvod}</translation>
    </message>
    <message>
        <source>Trezor odmítl čtení {ucet}: {duvod}</source>
        <translation>El almacén rechazó leer {ucet}: {duvod}</translation>
    </message>
    <message>
        <source>Tuhle zprávu jsem už jednou zpracoval. Podruhé ji neprovádím.</source>
        <translation>Ya he tratado este mensaje. No lo ejecuto otra vez.</translation>
    </message>
    <message>
        <source>U složek označených níže je potřeba jednou obnovit přístup. Klikni na Přidat nebo obnovit složku a vyber je znovu.</source>
        <translation>Hay que renovar una vez el acceso a las carpetas marcadas abajo. Haz clic en Añadir o renovar carpeta y elígelas de nuevo.</translation>
    </message>
    <message>
        <source>Ukončit Morvex</source>
        <translation>Salir de Morvex</translation>
    </message>
    <message>
        <source>Uložená adresa relaye nedává smysl.</source>
        <translation>La dirección guardada del relay no tiene sentido.</translation>
    </message>
    <message>
        <source>Uložit</source>
        <translation>Guardar</translation>
    </message>
    <message>
        <source>Upraveno %1</source>
        <translation>Modificado el %1</translation>
    </message>
    <message>
        <source>Upravit</source>
        <translation>Editar</translation>
    </message>
    <message>
        <source>Upravit vlastní aplikaci</source>
        <translation>Editar app propia</translation>
    </message>
    <message>
        <source>Už běží jiný úkol: {nastroj}. Počkej, nebo ho zruš.</source>
        <translation>Ya hay otra tarea en curso: {nastroj}. Espera o cancélala.</translation>
    </message>
    <message>
        <source>V Apple Mailu není nastavený žádný účet.</source>
        <translation>No hay ninguna cuenta configurada en Apple Mail.</translation>
    </message>
    <message>
        <source>V Morvex není povolený žádný poštovní účet.</source>
        <translation>En Morvex no está permitida ninguna cuenta de correo.</translation>
    </message>
    <message>
        <source>V téhle složce leží tvoje domovská: telefon se pak dostane ke všem tvým souborům.</source>
        <translation>En esta carpeta está tu carpeta personal: el teléfono llegará a todos tus archivos.</translation>
    </message>
    <message>
        <source>Verze aplikace</source>
        <translation>Versión de la app</translation>
    </message>
    <message>
        <source>Verze protokolu</source>
        <translation>Versión del protocolo</translation>
    </message>
    <message>
        <source>Veřejný klíč protějšku není bezpečný.</source>
        <translation>La clave pública del otro lado no es segura.</translation>
    </message>
    <message>
        <source>Vlastní aplikace</source>
        <translation>Apps propias</translation>
    </message>
    <message>
        <source>Vlastní aplikace odmítla přístupový token.</source>
        <translation>La app propia ha rechazado el token de acceso.</translation>
    </message>
    <message>
        <source>Vlastní aplikace vrátila HTTP {kod}.</source>
        <translation>La app propia ha respondido HTTP {kod}.</translation>
    </message>
    <message>
        <source>Vlastní aplikace vrátila neplatnou odpověď.</source>
        <translation>La app propia ha dado una respuesta no válida.</translation>
    </message>
    <message>
        <source>Vyber v nastavení Morvex výchozí účet pro odesílání.</source>
        <translation>Elige en los ajustes de Morvex la cuenta predeterminada para enviar.</translation>
    </message>
    <message>
        <source>Vyber složky, ve kterých smí Morvex pracovat.</source>
        <translation>Elige las carpetas en las que puede trabajar Morvex.</translation>
    </message>
    <message>
        <source>Vyhledávání na webu</source>
        <translation>Búsqueda en la web</translation>
    </message>
    <message>
        <source>Vyhrazené místo na disku je vyčerpané.</source>
        <translation>La cuota del disco está agotada.</translation>
    </message>
    <message>
        <source>Vymazat</source>
        <translation>Borrar</translation>
    </message>
    <message>
        <source>Vymazat historii</source>
        <translation>Borrar el historial</translation>
    </message>
    <message>
        <source>Vymazat historii úkolů?</source>
        <translation>¿Borrar el historial de tareas?</translation>
    </message>
    <message>
        <source>Vyžaduje znovu povolit</source>
        <translation>Hay que permitirla de nuevo</translation>
    </message>
    <message>
        <source>Výchozí volba se synchronizuje z hlavního iPhonu.</source>
        <translation>La opción por defecto se sincroniza desde el iPhone principal.</translation>
    </message>
    <message>
        <source>Zadání je pro program příliš dlouhé.</source>
        <translation>La entrada es demasiado larga para el programa.</translation>
    </message>
    <message>
        <source>Zakládám pár…</source>
        <translation>Creando el par…</translation>
    </message>
    <message>
        <source>Zamítnout</source>
        <translation>Rechazar</translation>
    </message>
    <message>
        <source>Zamítnuto.</source>
        <translation>Rechazado.</translation>
    </message>
    <message>
        <source>Zamítnuto: {duvod}</source>
        <translation>Denegado: {duvod}</translation>
    </message>
    <message>
        <source>Zapni jen služby, které má Morvex na tomto Macu používat.</source>
        <translation>Activa solo los servicios que Morvex deba usar en este Mac.</translation>
    </message>
    <message>
        <source>Zastavit</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Zatím žádný telefon. Morvex for Mac nic nedělá, dokud se nespáruje.</source>
        <translation>Todavía no hay teléfono. Morvex for Mac no hace nada hasta vincularse.</translation>
    </message>
    <message>
        <source>Zavřít</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Zařízení bylo odvoláno.</source>
        <translation>El dispositivo ha sido revocado.</translation>
    </message>
    <message>
        <source>Zařízení není spárované. {duvod}</source>
        <translation>El dispositivo no está vinculado. {duvod}</translation>
    </message>
    <message>
        <source>Zjistit znovu</source>
        <translation>Buscar de nuevo</translation>
    </message>
    <message>
        <source>Zjišťuji…</source>
        <translation>Buscando…</translation>
    </message>
    <message>
        <source>Zkopírováno</source>
        <translation>Copiado</translation>
    </message>
    <message>
        <source>Zkusit hned</source>
        <translation>Intentar ahora</translation>
    </message>
    <message>
        <source>Zkusit znovu</source>
        <translation>Intentar de nuevo</translation>
    </message>
    <message>
        <source>Změna se projeví od příštího hlasového rozhovoru a bezpečně se oznámí spárovanému iPhonu.</source>
        <translation>El cambio vale desde la próxima conversación por voz y se comunica de forma segura al iPhone vinculado.</translation>
    </message>
    <message>
        <source>Zobrazit QR kód</source>
        <translation>Mostrar código QR</translation>
    </message>
    <message>
        <source>Zpráva chybí.</source>
        <translation>Falta el mensaje.</translation>
    </message>
    <message>
        <source>Zpráva dorazila dřív, než bylo spojení zabezpečené. Zopakuj to.</source>
        <translation>El mensaje ha llegado antes de que la conexión estuviera protegida. Repítelo.</translation>
    </message>
    <message>
        <source>Zpráva dorazila mimo dobu své platnosti. Zkontroluj hodiny na obou zařízeních.</source>
        <translation>El mensaje ha llegado fuera de su plazo. Comprueba los relojes de ambos dispositivos.</translation>
    </message>
    <message>
        <source>Zpráva dorazila pozdě, po {vterin} vteřinách. Neprovedl jsem ji.</source>
        <translation>El mensaje ha llegado tarde, tras {vterin} segundos. No lo he ejecutado.</translation>
    </message>
    <message>
        <source>Zpráva je na přenos příliš dlouhá.</source>
        <translation>El mensaje es demasiado largo para enviarlo.</translation>
    </message>
    <message>
        <source>Zpráva je na zašifrování moc dlouhá.</source>
        <translation>El mensaje es demasiado largo para cifrarlo.</translation>
    </message>
    <message>
        <source>Zpráva je příliš dlouhá.</source>
        <translation>El mensaje es demasiado largo.</translation>
    </message>
    <message>
        <source>Zpráva má neznámou hodnotu „{hodnota}“.</source>
        <translation>El mensaje tiene el valor desconocido «{hodnota}».</translation>
    </message>
    <message>
        <source>Zpráva má neznámý druh „{druh}“.</source>
        <translation>El mensaje es del tipo desconocido «{druh}».</translation>
    </message>
    <message>
        <source>Zpráva má nečitelnou hodnotu „{hodnota}“.</source>
        <translation>El valor «{hodnota}» del mensaje no se puede leer.</translation>
    </message>
    <message>
        <source>Zpráva má příliš mnoho hodnot.</source>
        <translation>El mensaje tiene demasiados valores.</translation>
    </message>
    <message>
        <source>Zpráva má číslo mimo rozsah.</source>
        <translation>El número del mensaje está fuera de rango.</translation>
    </message>
    <message>
        <source>Zpráva má špatný typ ({typ}).</source>
        <translation>El mensaje tiene un tipo erróneo ({typ}).</translation>
    </message>
    <message>
        <source>Zpráva není platný JSON (bajt {bajt}).</source>
        <translation>El mensaje no es JSON válido (byte {bajt}).</translation>
    </message>
    <message>
        <source>Zpráva není zašifrovaná pro tohle spojení, nebo ji někdo změnil.</source>
        <translation>El mensaje no está cifrado para esta conexión, o alguien lo ha cambiado.</translation>
    </message>
    <message>
        <source>Zpráva neprošla ověřením.</source>
        <translation>El mensaje no ha superado la verificación.</translation>
    </message>
    <message>
        <source>Zpráva se opakuje nebo dorazila mimo pořadí.</source>
        <translation>El mensaje se repite o ha llegado fuera de orden.</translation>
    </message>
    <message>
        <source>Zprávu nejde ověřit: {duvod}</source>
        <translation>No se puede verificar el mensaje: {duvod}</translation>
    </message>
    <message>
        <source>Zrušeno.</source>
        <translation>Cancelado.</translation>
    </message>
    <message>
        <source>Zrušit</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Zůstane vzhůru, dokud je v zásuvce</source>
        <translation>Sigue despierto mientras esté enchufado</translation>
    </message>
    <message>
        <source>iPhone zůstává hlavní zařízení</source>
        <translation>El iPhone sigue siendo el dispositivo principal</translation>
    </message>
    <message>
        <source>kód {cislo}</source>
        <translation>código {cislo}</translation>
    </message>
    <message>
        <source>macOS nepovolil ovládání aplikace Mail. Otevři Nastavení systému → Soukromí a zabezpečení → Automatizace a povol tam Morvex přístup k Mailu.</source>
        <translation>macOS no permitió controlar Mail. Abre Ajustes del Sistema → Privacidad y seguridad → Automatización y permite allí que Morvex acceda a Mail.</translation>
    </message>
    <message>
        <source>objekt</source>
        <translation>objeto</translation>
    </message>
    <message>
        <source>pole</source>
        <translation>lista</translation>
    </message>
    <message>
        <source>položka neexistuje</source>
        <translation>el elemento no existe</translation>
    </message>
    <message>
        <source>položka už existuje</source>
        <translation>el elemento ya existe</translation>
    </message>
    <message>
        <source>položku nejde číst nebo zapsat</source>
        <translation>el elemento no se puede leer ni escribir</translation>
    </message>
    <message>
        <source>pravdivostní hodnota</source>
        <translation>valor booleano</translation>
    </message>
    <message>
        <source>text</source>
        <translation>texto</translation>
    </message>
    <message>
        <source>trezor je zamčený</source>
        <translation>el almacén está bloqueado</translation>
    </message>
    <message>
        <source>trezor není dostupný</source>
        <translation>el almacén no está disponible</translation>
    </message>
    <message>
        <source>uživatel odemčení zrušil</source>
        <translation>el usuario canceló el desbloqueo</translation>
    </message>
    <message>
        <source>z iPhonu · E2EE</source>
        <translation>del iPhone · E2EE</translation>
    </message>
    <message>
        <source>Úkoly zadané Codexu nebo Claude přes telefon se objeví tady. Pak v nich můžeš pokračovat jedním kliknutím.</source>
        <translation>Las tareas encargadas a Codex o Claude por teléfono aparecen aquí. Luego puedes continuarlas con un clic.</translation>
    </message>
    <message>
        <source>Úkoly zůstanou v Claude a Codexu, ale Morvex už k nim nebude nabízet tlačítka pro pokračování.</source>
        <translation>Las tareas quedan en Claude y Codex, pero Morvex ya no ofrecerá botones para continuarlas.</translation>
    </message>
    <message>
        <source>Čeká na potvrzení: %1</source>
        <translation>Espera confirmación: %1</translation>
    </message>
    <message>
        <source>Čekám na OpenAI klíč z iPhonu</source>
        <translation>Esperando la clave de OpenAI del iPhone</translation>
    </message>
    <message>
        <source>Čekám na klíče tohoto počítače. Pokud se klíčenka ptá na heslo, odemkni ji.</source>
        <translation>Esperando las claves de este ordenador. Si el llavero pide la contraseña, desbloquéalo.</translation>
    </message>
    <message>
        <source>Čekám na klíče tohoto počítače…</source>
        <translation>Esperando las claves de este ordenador…</translation>
    </message>
    <message>
        <source>Část cesty není složka.</source>
        <translation>Una parte de la ruta no es una carpeta.</translation>
    </message>
    <message>
        <source>Čísla se neshodovala. Párování jsem zrušil a nic neuložil. Zkus to znovu; pokud se to bude opakovat, někdo poslouchá.</source>
        <translation>Los números no coincidían. He cancelado la vinculación y no he guardado nada. Inténtalo de nuevo; si se repite, alguien escucha.</translation>
    </message>
    <message>
        <source>číslo</source>
        <translation>número</translation>
    </message>
    <message>
        <source>Šifrované spojení se serverem se nepodařilo navázat. Pokud server na tomto portu nešifruje, jeho adresa začíná http://, ne https://.</source>
        <translation>No se pudo acordar una conexión cifrada con el servidor. Si el servidor no cifra en este puerto, su dirección empieza por http://, no por https://.</translation>
    </message>
    <message>
        <source>Žádná. Bez povolené složky nemá Codex ani Claude Code kde pracovat, takže se telefonu vůbec nenabídnou.</source>
        <translation>Ninguna. Sin una carpeta permitida, ni Codex ni Claude Code tienen dónde trabajar, así que no se ofrecen al teléfono.</translation>
    </message>
    <message>
        <source>Žádné vlastní aplikace</source>
        <translation>No hay apps propias</translation>
    </message>
    <message>
        <source>Mac není připojený</source>
        <translation>El Mac no está conectado</translation>
    </message>
    <message>
        <source>Mac spí ({minut} min)</source>
        <translation>El Mac está en reposo ({minut} min)</translation>
    </message>
    <message>
        <source>Vypnuto</source>
        <translation>Desactivado</translation>
    </message>
    <message>
        <source>Nainstaluj: npm i -g @anthropic-ai/claude-code</source>
        <translation>Instálalo: npm i -g @anthropic-ai/claude-code</translation>
    </message>
    <message>
        <source>Zjišťuji nástroje…</source>
        <translation>Buscando herramientas…</translation>
    </message>
    <message>
        <source>Nepřipojeno: {duvod}</source>
        <translation>Sin conexión: {duvod}</translation>
    </message>
    <message>
        <source>Co je vidět z nástrojů aplikací, se nepodařilo uložit: {duvod}</source>
        <translation>Lo visto de las herramientas de las apps no se pudo guardar: {duvod}</translation>
    </message>
    <message>
        <source>Změny nástrojů</source>
        <translation>Cambios de herramientas</translation>
    </message>
    <message>
        <source>Změny nástrojů: %1</source>
        <translation>Cambios de herramientas: %1</translation>
    </message>
    <message>
        <source>Změny nástrojů nejdřív schválit</source>
        <translation>Aprobar antes los cambios de herramientas</translation>
    </message>
    <message>
        <source>Změněný nebo nový nástroj pak asistentka nedostane, dokud se na něj nepodíváš.</source>
        <translation>La asistente no recibe una herramienta cambiada o nueva hasta que la hayas mirado.</translation>
    </message>
    <message>
        <source>Od posledního pohledu se nic nezměnilo.</source>
        <translation>Nada ha cambiado desde la última vez que miraste.</translation>
    </message>
    <message>
        <source>Nový nástroj: %1</source>
        <translation>Herramienta nueva: %1</translation>
    </message>
    <message>
        <source>Změněný nástroj: %1</source>
        <translation>Herramienta cambiada: %1</translation>
    </message>
    <message>
        <source>Bylo: %1</source>
        <translation>Antes: %1</translation>
    </message>
    <message>
        <source>Je: %1</source>
        <translation>Ahora: %1</translation>
    </message>
    <message>
        <source>Mezitím bylo: %1</source>
        <translation>Entretanto fue: %1</translation>
    </message>
    <message>
        <source>Beru na vědomí</source>
        <translation>Lo he visto</translation>
    </message>
    <message>
        <source>Změněné nebo nové nástroje: %1</source>
        <translation>Herramientas cambiadas o nuevas: %1</translation>
    </message>
    <message>
        <source>Aktuální veřejné informace se zdroji</source>
        <translation>Información pública actual con fuentes</translation>
    </message>
    <message>
        <source>Webové hledání selhalo (HTTP {stav}).</source>
        <translation>La búsqueda web ha fallado (HTTP {stav}).</translation>
    </message>
    <message>
        <source>Webové hledání vrátilo nečitelnou odpověď.</source>
        <translation>La búsqueda web devolvió una respuesta ilegible.</translation>
    </message>
    <message>
        <source>Chybí OpenAI API klíč.</source>
        <translation>Falta la clave API de OpenAI.</translation>
    </message>
    <message>
        <source>Chybí vyhledávací dotaz.</source>
        <translation>Falta la consulta de búsqueda.</translation>
    </message>
    <message numerus="yes">
        <source>Připojeno · {pocet} nástrojů · {doba} ms</source>
        <translation>
            <numerusform>Conectada · {pocet} herramienta · {doba} ms</numerusform>
            <numerusform>Conectada · {pocet} herramientas · {doba} ms</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Připojeno · {pocet} nástrojů · {ceka} čeká na schválení · {doba} ms</source>
        <translation>
            <numerusform>Conectada · {pocet} herramienta · {ceka} esperan aprobación · {doba} ms</numerusform>
            <numerusform>Conectada · {pocet} herramientas · {ceka} esperan aprobación · {doba} ms</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{stav} · {pocet} nástrojů se nedá použít nebo se nevešlo</source>
        <translation>
            <numerusform>{stav} · {pocet} herramienta no se puede usar o no cabía</numerusform>
            <numerusform>{stav} · {pocet} herramientas no se pueden usar o no cabían</numerusform>
        </translation>
    </message>
    <message>
        <source>Chybí heslo k poštovnímu účtu.</source>
        <translation>Falta la contraseña de la cuenta de correo.</translation>
    </message>
    <message>
        <source>Není nastavený žádný přímý SMTP/IMAP účet.</source>
        <translation>No hay ninguna cuenta SMTP/IMAP directa configurada.</translation>
    </message>
    <message>
        <source>Vyber výchozí SMTP účet nebo řekni jeho název.</source>
        <translation>Elige una cuenta SMTP predeterminada o di su nombre.</translation>
    </message>
    <message>
        <source>Přímé SMTP neumí ukládat koncepty. Pro koncept použij účet v Apple Mailu.</source>
        <translation>El SMTP directo no guarda borradores. Para un borrador usa una cuenta de Apple Mail.</translation>
    </message>
    <message>
        <source>SMTP účet „{nazev}“ není připojený.</source>
        <translation>La cuenta SMTP «{nazev}» no está conectada.</translation>
    </message>
    <message>
        <source>Zprávu s tímhle číslem jsem nenašel.</source>
        <translation>No he encontrado ningún mensaje con este número.</translation>
    </message>
    <message>
        <source>E-mail byl odeslán z účtu {ucet}.</source>
        <translation>El correo se ha enviado desde la cuenta {ucet}.</translation>
    </message>
    <message>
        <source>Ověřuji…</source>
        <translation>Comprobando…</translation>
    </message>
    <message>
        <source>Ověřeno</source>
        <translation>Comprobada</translation>
    </message>
    <message>
        <source>Chybí adresa nebo server.</source>
        <translation>Falta la dirección o un servidor.</translation>
    </message>
    <message>
        <source>Není vybrán</source>
        <translation>Ninguna elegida</translation>
    </message>
    <message numerus="yes">
        <source>{pocet} účtů vybráno</source>
        <translation>
            <numerusform>{pocet} cuenta elegida</numerusform>
            <numerusform>{pocet} cuentas elegidas</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>{pocet} účtů</source>
        <translation>
            <numerusform>{pocet} cuenta</numerusform>
            <numerusform>{pocet} cuentas</numerusform>
        </translation>
    </message>
    <message>
        <source>SMTP / IMAP</source>
        <translation>SMTP / IMAP</translation>
    </message>
    <message>
        <source>Přidat účet</source>
        <translation>Añadir cuenta</translation>
    </message>
    <message>
        <source>Přímé poštovní účty fungují nezávisle na Apple Mailu. Hesla zůstávají v Keychainu tohoto Macu.</source>
        <translation>Las cuentas de correo directas funcionan sin Apple Mail. Las contraseñas se quedan en el llavero de este Mac.</translation>
    </message>
    <message>
        <source>Zatím není připojený žádný SMTP účet.</source>
        <translation>Todavía no hay ninguna cuenta SMTP conectada.</translation>
    </message>
    <message>
        <source>Výchozí účet pro odesílání</source>
        <translation>Cuenta predeterminada para enviar</translation>
    </message>
    <message>
        <source>Ověřit</source>
        <translation>Comprobar</translation>
    </message>
    <message>
        <source>Nastavit jako výchozí</source>
        <translation>Usar como predeterminada</translation>
    </message>
    <message>
        <source>Upravit SMTP účet</source>
        <translation>Editar cuenta SMTP</translation>
    </message>
    <message>
        <source>Přidat SMTP účet</source>
        <translation>Añadir cuenta SMTP</translation>
    </message>
    <message>
        <source>Odstranit účet</source>
        <translation>Eliminar la cuenta</translation>
    </message>
    <message>
        <source>Uložit a ověřit</source>
        <translation>Guardar y comprobar</translation>
    </message>
    <message>
        <source>Stejné údaje jako v iPhone aplikaci. IMAP používá port 993 a SMTP port 465 se šifrováním TLS.</source>
        <translation>Los mismos datos que en la app del iPhone. IMAP usa el puerto 993 y SMTP el 465, con cifrado TLS.</translation>
    </message>
    <message>
        <source>Název účtu</source>
        <translation>Nombre de la cuenta</translation>
    </message>
    <message>
        <source>E-mailová adresa</source>
        <translation>Dirección de correo</translation>
    </message>
    <message>
        <source>Jméno odesílatele</source>
        <translation>Nombre del remitente</translation>
    </message>
    <message>
        <source>IMAP server</source>
        <translation>Servidor IMAP</translation>
    </message>
    <message>
        <source>SMTP server</source>
        <translation>Servidor SMTP</translation>
    </message>
    <message>
        <source>Heslo nebo heslo pro aplikaci</source>
        <translation>Contraseña o contraseña de aplicación</translation>
    </message>
    <message>
        <source>Služby, které programům nedovolí heslo (Outlook, Microsoft 365), takhle připojit nejde.</source>
        <translation>Los servicios que no permiten contraseñas a los programas (Outlook, Microsoft 365) no se pueden conectar así.</translation>
    </message>
    <message>
        <source>Morvex zde vidí jen účty přidané přímo do Apple Mailu.</source>
        <translation>Aquí Morvex solo ve las cuentas añadidas directamente a Apple Mail.</translation>
    </message>
    <message>
        <source>Odstranit účet „%1“?</source>
        <translation>¿Eliminar la cuenta «%1»?</translation>
    </message>
    <message>
        <source>Odstraní se i jeho heslo. Pošta na serveru zůstane.</source>
        <translation>Se elimina también su contraseña. El correo se queda en el servidor.</translation>
    </message>
    <message>
        <source>Vybrat</source>
        <translation>Elegir</translation>
    </message>
    <message>
        <source>{stav}. Na místo upozorní zařízení, která seznam sdílejí, tento počítač ne.</source>
        <translation>{stav}. En un lugar avisan los dispositivos que comparten la lista, este ordenador no.</translation>
    </message>
    <message>
        <source>Vybrat kalendáře</source>
        <translation>Elegir calendarios</translation>
    </message>
    <message>
        <source>Morvex uvidí pouze označené kalendáře.</source>
        <translation>Morvex solo verá los calendarios marcados.</translation>
    </message>
    <message>
        <source>Jen pro čtení</source>
        <translation>Solo lectura</translation>
    </message>
    <message>
        <source>Výchozí pro nové události</source>
        <translation>Predeterminado para eventos nuevos</translation>
    </message>
    <message>
        <source>Automaticky</source>
        <translation>Automático</translation>
    </message>
    <message numerus="yes">
        <source>{pocet} kalendářů vybráno</source>
        <translation>
            <numerusform>{pocet} calendario seleccionado</numerusform>
            <numerusform>{pocet} calendarios seleccionados</numerusform>
        </translation>
    </message>
    <message>
        <source>Tahle verze to ještě neumí.</source>
        <translation>Esta versión todavía no sabe hacerlo.</translation>
    </message>
</context>
</TS>
