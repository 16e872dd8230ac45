<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>Alert</name>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <translation>Tavin lee el texto seleccionado en otros programas mediante la interfaz de accesibilidad, que está desactivada. Salga de Tavin y vuelva a iniciarlo: activará la interfaz. O active las tecnologías de asistencia en la configuración del escritorio. Quizá también haya que reiniciar los programas que ya están abiertos.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>GNOME</comment>
        <translation>Tavin lee el texto seleccionado en otros programas mediante la interfaz de accesibilidad, que está desactivada. Salga de Tavin y vuelva a iniciarlo: activará la interfaz. También la activa el lector de pantalla en Configuración &gt; Accesibilidad. Quizá haya que reiniciar los programas que ya están abiertos.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>Plasma</comment>
        <translation>Tavin lee el texto seleccionado en otros programas mediante la interfaz de accesibilidad, que está desactivada. Salga de Tavin y vuelva a iniciarlo: activará la interfaz. También la activa el lector de pantalla en Preferencias del sistema &gt; Accesibilidad. Quizá haya que reiniciar los programas que ya están abiertos.</translation>
    </message>
    <message>
        <source>Tavin couldn&apos;t read that</source>
        <translation>Tavin no ha podido leer esto</translation>
    </message>
    <message>
        <source>Tavin needs Accessibility access</source>
        <translation>Tavin necesita la interfaz de accesibilidad</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Abrir la configuración</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Tavin is downloading its voices (%1%). This happens once.</source>
        <translation>Tavin está descargando sus voces (%1&#xa0;%). Solo ocurre una vez.</translation>
    </message>
    <message>
        <source>Voice setup failed: %1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Tavin is still loading its voices. Try again in a few seconds.</source>
        <translation>Tavin todavía está cargando sus voces. Inténtelo de nuevo en unos segundos.</translation>
    </message>
    <message>
        <source>%1 API key</source>
        <translation>Clave de API de %1</translation>
    </message>
    <message>
        <source>Stored in your macOS Keychain. Leave empty to remove the key.</source>
        <translation>Se guarda en su depósito de claves. Deje el campo vacío para eliminarla.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Guardar</translation>
    </message>
    <message>
        <source>Launch at Login failed: %1</source>
        <translation>No se pudo cambiar el inicio automático: %1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>Engine</name>
    <message>
        <source>%1 needs a key: choose “Set API Key” in Tavin&apos;s menu.</source>
        <translation>%1 necesita una clave: elija «Establecer clave de API» en el menú de Tavin.</translation>
    </message>
    <message>
        <source>%1 does not accept the key (HTTP %2).</source>
        <translation>%1 no acepta la clave (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 wants to be paid: the account has no credit left (HTTP %2).</source>
        <translation>La cuenta de %1 no tiene saldo (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 says that the account&apos;s quota is used up (HTTP %2).</source>
        <translation>%1 indica que la cuota de la cuenta está agotada (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is too slow or does not answer.</source>
        <translation>%1 es demasiado lento o no responde.</translation>
    </message>
    <message>
        <source>%1 cannot be found; this computer may be offline.</source>
        <translation>No se encuentra %1. ¿Está conectado este equipo?</translation>
    </message>
    <message>
        <source>%1 cannot read this text.</source>
        <translation>%1 no puede leer este texto.</translation>
    </message>
    <message>
        <source>No voice on this computer speaks %1.</source>
        <translation>Ninguna voz de este equipo habla el idioma «%1».</translation>
    </message>
    <message>
        <source>%1 is still downloading its voices (%2%).</source>
        <translation>%1 todavía está descargando sus voces (%2&#xa0;%).</translation>
    </message>
    <message>
        <source>%1 is still loading its voices.</source>
        <translation>%1 todavía está cargando sus voces.</translation>
    </message>
    <message>
        <source>The key for %1 cannot be read: %2</source>
        <translation>No se puede leer la clave de %1: %2</translation>
    </message>
    <message>
        <source>The key for %1 is kept only until Tavin ends: %2</source>
        <translation>La clave de %1 solo se conserva hasta que Tavin termine: %2</translation>
    </message>
    <message>
        <source>The key for %1 could not be removed: %2</source>
        <translation>No se pudo eliminar la clave de %1: %2</translation>
    </message>
    <message>
        <source>The keyring was not unlocked.</source>
        <translation>El depósito de claves no se desbloqueó.</translation>
    </message>
    <message>
        <source>The keyring does not answer.</source>
        <translation>El depósito de claves no responde.</translation>
    </message>
    <message>
        <source>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</source>
        <translation>Este escritorio no tiene un depósito de claves como GNOME Keyring o KWallet.</translation>
    </message>
    <message>
        <source>The sound server does not answer.</source>
        <translation>El servidor de sonido no responde.</translation>
    </message>
    <message>
        <source>The sound output could not be started.</source>
        <translation>No se pudo iniciar la salida de sonido.</translation>
    </message>
    <message>
        <source>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</source>
        <translation>Falta pip de Python: instale el paquete python3-venv y elija %1 de nuevo.</translation>
    </message>
    <message>
        <source>The disk is full: make room in %1, then choose %2 again.</source>
        <translation>El disco está lleno: libere espacio en %1 y elija %2 de nuevo.</translation>
    </message>
    <message>
        <source>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</source>
        <translation>%1 necesita %2 MB en %3 y hay %4 MB libres. Libere espacio y elija %5 de nuevo.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2. See to it, then choose %3 again.</source>
        <translation>No se puede escribir en %1: %2. Corríjalo y elija %3 de nuevo.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</source>
        <translation>No se pudieron descargar las bibliotecas de %1. Compruebe la red y elija %2 de nuevo.</translation>
    </message>
    <message>
        <source>No download from %1: %2. Check the network, then choose %3 again.</source>
        <translation>No se pudo descargar de %1: %2. Compruebe la red y elija %3 de nuevo.</translation>
    </message>
    <message>
        <source>Getting the voices takes too long. Choose %1 again.</source>
        <translation>Descargar las voces tarda demasiado. Elija %1 de nuevo.</translation>
    </message>
    <message>
        <source>%1 could not be set up. Choose it again.</source>
        <translation>No se pudo preparar %1. Elíjalo de nuevo.</translation>
    </message>
    <message>
        <source>%1 does not allow this with the key (HTTP %2).</source>
        <translation>%1 no permite esto con la clave (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 does not know this voice or model (HTTP %2).</source>
        <translation>%1 no conoce esta voz o este modelo (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is asked too often or the account&apos;s quota is used up; try again later (HTTP %2).</source>
        <translation>%1 recibe demasiadas peticiones o la cuota de la cuenta está agotada (HTTP %2). Inténtelo de nuevo más tarde.</translation>
    </message>
    <message>
        <source>%1 has trouble of its own; try again later (HTTP %2).</source>
        <translation>%1 tiene problemas (HTTP %2). Inténtelo de nuevo más tarde.</translation>
    </message>
    <message>
        <source>%1 did not accept the text (HTTP %2).</source>
        <translation>%1 no ha aceptado el texto (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 did not do as asked (HTTP %2).</source>
        <translation>%1 no ha atendido la petición (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 broke off the connection.</source>
        <translation>%1 ha cortado la conexión.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>No se puede contactar con %1: %2.</translation>
    </message>
    <message>
        <source>the proxy does not allow it</source>
        <translation>el proxy no lo permite</translation>
    </message>
    <message>
        <source>%1 cannot be trusted: its certificate is not valid.</source>
        <translation>%1 no es de confianza: su certificado no es válido.</translation>
    </message>
    <message>
        <source>This choice is kept only until Tavin ends: %1.</source>
        <translation>Esta elección solo se conserva hasta que Tavin termine: %1.</translation>
    </message>
    <message>
        <source>The engine could not read this text.</source>
        <translation>El motor no ha podido leer este texto.</translation>
    </message>
    <message>
        <source>The keyring is locked.</source>
        <translation>El depósito de claves está bloqueado.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</source>
        <translation>No se pueden cargar las bibliotecas de %1 (%2). Elija %3 de nuevo.</translation>
    </message>
    <message>
        <source>eSpeak NG is not installed (package libespeak-ng1).</source>
        <translation>eSpeak NG no está instalado (paquete libespeak-ng1).</translation>
    </message>
    <message>
        <source>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</source>
        <translation>%1 rechaza la descarga (respuesta %2). Elija %3 de nuevo más tarde o actualice Tavin.</translation>
    </message>
    <message>
        <source>Getting the voices stopped unexpectedly (%1). Choose %2 again.</source>
        <translation>La descarga de las voces se ha detenido inesperadamente (%1). Elija %2 de nuevo.</translation>
    </message>
    <message>
        <source>it ended too early</source>
        <translation>la transferencia terminó demasiado pronto</translation>
    </message>
    <message>
        <source>it went on at another place</source>
        <translation>la transferencia continuó en otro lugar</translation>
    </message>
    <message>
        <source>something else was sent</source>
        <translation>se envió otra cosa</translation>
    </message>
    <message>
        <source>it is too slow</source>
        <translation>la transferencia es demasiado lenta</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>sin respuesta</translation>
    </message>
    <message>
        <source>answer %1</source>
        <translation>respuesta %1</translation>
    </message>
    <message>
        <source>No sound output is connected.</source>
        <translation>No hay ninguna salida de sonido conectada.</translation>
    </message>
    <message>
        <source>The sound output was disconnected.</source>
        <translation>Se ha desconectado la salida de sonido.</translation>
    </message>
    <message>
        <source>The sound output could not be started (%1).</source>
        <translation>No se ha podido iniciar la salida de sonido (%1).</translation>
    </message>
    <message>
        <source>The sound output stopped unexpectedly (%1).</source>
        <translation>La salida de sonido se ha detenido de forma inesperada (%1).</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>No se ha podido iniciar %1.</translation>
    </message>
    <message>
        <source>%1 could not be started (%2).</source>
        <translation>No se ha podido iniciar %1 (%2).</translation>
    </message>
    <message>
        <source>%1 stopped unexpectedly (%2) and was started again.</source>
        <translation>%1 se ha detenido de forma inesperada (%2) y se ha vuelto a iniciar.</translation>
    </message>
    <message>
        <source>%1 sent an answer that makes no sense.</source>
        <translation>%1 ha enviado una respuesta sin sentido.</translation>
    </message>
    <message>
        <source>%1 sent something other than sound.</source>
        <translation>%1 ha enviado algo que no es sonido.</translation>
    </message>
    <message>
        <source>%1 sent more sound than the text can have.</source>
        <translation>%1 ha enviado más sonido del que puede tener el texto.</translation>
    </message>
    <message>
        <source>%1 offers no voice to this account.</source>
        <translation>%1 no ofrece ninguna voz a esta cuenta.</translation>
    </message>
    <message>
        <source>%1 sent other files than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 ha enviado archivos distintos de los esperados. Elija de nuevo %2 o actualice Tavin.</translation>
    </message>
    <message>
        <source>%1 offers another file than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 ofrece un archivo distinto del esperado. Elija de nuevo %2 o actualice Tavin.</translation>
    </message>
    <message>
        <source>Choose this voice of Piper again: it cannot be loaded (%1).</source>
        <translation>Elija de nuevo esta voz de Piper: no se puede cargar (%1).</translation>
    </message>
    <message>
        <source>Choose Kokoro again: its files cannot be loaded (%1).</source>
        <translation>Elija de nuevo Kokoro: no se pueden cargar sus archivos (%1).</translation>
    </message>
    <message>
        <source>Package python3-secretstorage is not installed.</source>
        <translation>El paquete python3-secretstorage no está instalado.</translation>
    </message>
    <message>
        <source>Without a session bus, the keyring cannot be reached.</source>
        <translation>No se puede acceder al depósito de claves: no hay un bus de sesión.</translation>
    </message>
    <message>
        <source>The keyring could not be asked.</source>
        <translation>No se ha podido consultar el depósito de claves.</translation>
    </message>
    <message>
        <source>What is stored there is not a key.</source>
        <translation>Lo que hay guardado allí no es una clave.</translation>
    </message>
    <message>
        <source>eSpeak NG&apos;s data is missing (package espeak-ng-data).</source>
        <translation>Faltan los datos de eSpeak NG (paquete espeak-ng-data).</translation>
    </message>
</context>
<context>
    <name>Login</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>No se pudo crear la carpeta %1.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>No se pudo escribir %1: %2</translation>
    </message>
    <message>
        <source>%1 could not be removed: %2</source>
        <translation>No se pudo eliminar %1: %2</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Hear a second, robotic voice too?</source>
        <translation>⌥ es Alt, ⌃ es Control, ⇧ es Mayús.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <translation>Algunos escritorios usan Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <translation>Si es el caso, elija ⌃ Esc o ⌃⌥ R, o cámbielo</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <translation>en los ajustes del teclado.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>GNOME</comment>
        <translation>GNOME cambia de ventana con Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>GNOME</comment>
        <translation>Elija ⌃ Esc, o cambie el atajo de GNOME en</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>GNOME</comment>
        <translation>Configuración &gt; Teclado.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Plasma</comment>
        <translation>Plasma no usa Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Plasma</comment>
        <translation>Si lo usa otro programa, cámbielo en</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Plasma</comment>
        <translation>Preferencias del sistema &gt; Accesos rápidos.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Xfce</comment>
        <translation>Xfce no usa Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Xfce</comment>
        <translation>Si lo usa otro programa, cámbielo en</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Xfce</comment>
        <translation>Configuración &gt; Teclado.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>no shortcuts</comment>
        <translation>Este escritorio no ofrece atajos a los programas.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>no shortcuts</comment>
        <translation>Cree en él un atajo que llame a Tavin:</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>no shortcuts</comment>
        <translation>véase «man tavin».</translation>
    </message>
    <message>
        <source>Voice engine starting…</source>
        <translation>Iniciando el motor de voz…</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Speak Selection</source>
        <translation>Leer la selección</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reanudar</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <translation>⚠︎ %1 lo usa el escritorio u otro programa</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <comment>no shortcuts</comment>
        <translation>⚠︎ %1 no funciona: este escritorio no ofrece atajos</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Atajo: %1</translation>
    </message>
    <message>
        <source>Loading voices…</source>
        <translation>Cargando las voces…</translation>
    </message>
    <message>
        <source>⚠︎ Voice setup failed: %1</source>
        <translation>⚠︎ No se pudo preparar la voz: %1</translation>
    </message>
    <message>
        <source>Downloading voices… %1%</source>
        <translation>Descargando las voces… %1&#xa0;%</translation>
    </message>
    <message>
        <source>%1 (add API key)</source>
        <translation>%1 (añadir clave de API)</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>Motor: %1</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Cargando…</translation>
    </message>
    <message>
        <source>Voice: %1</source>
        <translation>Voz: %1</translation>
    </message>
    <message>
        <source>Speed: %1</source>
        <translation>Velocidad: %1</translation>
    </message>
    <message>
        <source>Set API Key</source>
        <translation>Establecer clave de API</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Iniciar al entrar en la sesión</translation>
    </message>
    <message>
        <source>Open Engine Log</source>
        <translation>Abrir el registro del motor</translation>
    </message>
    <message>
        <source>Quit Tavin</source>
        <translation>Salir de Tavin</translation>
    </message>
    <message>
        <source>.</source>
        <comment>decimal point of a speed</comment>
        <translation>,</translation>
    </message>
</context>
<context>
    <name>Shortcut</name>
    <message>
        <source>Pause or Resume</source>
        <translation>Pausar o reanudar</translation>
    </message>
    <message>
        <source>Speak Selection or Stop</source>
        <translation>Leer la selección o detener</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>Nothing to read</source>
        <translation>Nada que leer</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Reading or paused</source>
        <translation>Leyendo o en pausa</translation>
    </message>
    <message>
        <source>Not reading</source>
        <translation>Sin lectura en curso</translation>
    </message>
</context>
</TS>
