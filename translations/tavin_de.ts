<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Alert</name>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <translation>Tavin liest den ausgewählten Text anderer Programme über die Schnittstelle für Barrierefreiheit, und die ist ausgeschaltet. Beenden Sie Tavin und starten Sie es neu: Es schaltet die Schnittstelle ein. Oder schalten Sie in den Einstellungen des Desktops die Barrierefreiheitsfunktionen ein. Programme, die schon laufen, müssen vielleicht ebenfalls neu gestartet werden.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>GNOME</comment>
        <translation>Tavin liest den ausgewählten Text anderer Programme über die Schnittstelle für Barrierefreiheit, und die ist ausgeschaltet. Beenden Sie Tavin und starten Sie es neu: Es schaltet die Schnittstelle ein. Das tut auch der Bildschirmleser unter Einstellungen &gt; Barrierefreiheit. Programme, die schon laufen, müssen vielleicht neu gestartet werden.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>Plasma</comment>
        <translation>Tavin liest den ausgewählten Text anderer Programme über die Schnittstelle für Barrierefreiheit, und die ist ausgeschaltet. Beenden Sie Tavin und starten Sie es neu: Es schaltet die Schnittstelle ein. Das tut auch der Bildschirmleser unter Systemeinstellungen &gt; Zugangshilfen. Programme, die schon laufen, müssen vielleicht neu gestartet werden.</translation>
    </message>
    <message>
        <source>Tavin couldn&apos;t read that</source>
        <translation>Tavin konnte das nicht vorlesen</translation>
    </message>
    <message>
        <source>Tavin needs Accessibility access</source>
        <translation>Tavin braucht die Schnittstelle für Barrierefreiheit</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Tavin is downloading its voices (%1%). This happens once.</source>
        <translation>Tavin lädt seine Stimmen herunter (%1&#xa0;%). Das geschieht nur einmal.</translation>
    </message>
    <message>
        <source>Voice setup failed: %1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Tavin is still loading its voices. Try again in a few seconds.</source>
        <translation>Tavin lädt seine Stimmen noch. Versuchen Sie es in ein paar Sekunden erneut.</translation>
    </message>
    <message>
        <source>%1 API key</source>
        <translation>API-Schlüssel für %1</translation>
    </message>
    <message>
        <source>Stored in your macOS Keychain. Leave empty to remove the key.</source>
        <translation>Wird in Ihrem Schlüsselbund gespeichert. Zum Entfernen leer lassen.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Launch at Login failed: %1</source>
        <translation>Der Start bei der Anmeldung konnte nicht geändert werden: %1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Engine</name>
    <message>
        <source>%1 needs a key: choose “Set API Key” in Tavin&apos;s menu.</source>
        <translation>%1 braucht einen Schlüssel: Wählen Sie „API-Schlüssel festlegen“ in Tavins Menü.</translation>
    </message>
    <message>
        <source>%1 does not accept the key (HTTP %2).</source>
        <translation>%1 nimmt den Schlüssel nicht an (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 wants to be paid: the account has no credit left (HTTP %2).</source>
        <translation>Das Konto bei %1 hat kein Guthaben mehr (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 says that the account&apos;s quota is used up (HTTP %2).</source>
        <translation>%1 meldet, dass das Kontingent des Kontos aufgebraucht ist (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is too slow or does not answer.</source>
        <translation>%1 ist zu langsam oder antwortet nicht.</translation>
    </message>
    <message>
        <source>%1 cannot be found; this computer may be offline.</source>
        <translation>%1 ist nicht zu finden. Ist dieser Rechner online?</translation>
    </message>
    <message>
        <source>%1 cannot read this text.</source>
        <translation>%1 kann diesen Text nicht vorlesen.</translation>
    </message>
    <message>
        <source>No voice on this computer speaks %1.</source>
        <translation>Keine Stimme auf diesem Rechner spricht die Sprache „%1“.</translation>
    </message>
    <message>
        <source>%1 is still downloading its voices (%2%).</source>
        <translation>%1 lädt seine Stimmen noch herunter (%2&#xa0;%).</translation>
    </message>
    <message>
        <source>%1 is still loading its voices.</source>
        <translation>%1 lädt seine Stimmen noch.</translation>
    </message>
    <message>
        <source>The key for %1 cannot be read: %2</source>
        <translation>Der Schlüssel für %1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>The key for %1 is kept only until Tavin ends: %2</source>
        <translation>Der Schlüssel für %1 wird nur bis zum Beenden von Tavin behalten: %2</translation>
    </message>
    <message>
        <source>The key for %1 could not be removed: %2</source>
        <translation>Der Schlüssel für %1 konnte nicht entfernt werden: %2</translation>
    </message>
    <message>
        <source>The keyring was not unlocked.</source>
        <translation>Der Schlüsselbund wurde nicht entsperrt.</translation>
    </message>
    <message>
        <source>The keyring does not answer.</source>
        <translation>Der Schlüsselbund antwortet nicht.</translation>
    </message>
    <message>
        <source>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</source>
        <translation>Dieser Desktop hat keinen Schlüsselbund wie GNOME Keyring oder KWallet.</translation>
    </message>
    <message>
        <source>The sound server does not answer.</source>
        <translation>Der Soundserver antwortet nicht.</translation>
    </message>
    <message>
        <source>The sound output could not be started.</source>
        <translation>Die Tonausgabe konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</source>
        <translation>Pythons pip fehlt: Installieren Sie das Paket python3-venv und wählen Sie %1 erneut.</translation>
    </message>
    <message>
        <source>The disk is full: make room in %1, then choose %2 again.</source>
        <translation>Der Datenträger ist voll: Schaffen Sie Platz in %1 und wählen Sie %2 erneut.</translation>
    </message>
    <message>
        <source>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</source>
        <translation>%1 braucht %2 MB in %3, und %4 MB sind frei. Schaffen Sie Platz und wählen Sie %5 erneut.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2. See to it, then choose %3 again.</source>
        <translation>In %1 kann nicht geschrieben werden: %2. Beheben Sie das und wählen Sie %3 erneut.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</source>
        <translation>Die Bibliotheken von %1 konnten nicht heruntergeladen werden. Prüfen Sie das Netzwerk und wählen Sie %2 erneut.</translation>
    </message>
    <message>
        <source>No download from %1: %2. Check the network, then choose %3 again.</source>
        <translation>Von %1 konnte nichts heruntergeladen werden: %2. Prüfen Sie das Netzwerk und wählen Sie %3 erneut.</translation>
    </message>
    <message>
        <source>Getting the voices takes too long. Choose %1 again.</source>
        <translation>Das Herunterladen der Stimmen dauert zu lange. Wählen Sie %1 erneut.</translation>
    </message>
    <message>
        <source>%1 could not be set up. Choose it again.</source>
        <translation>%1 konnte nicht eingerichtet werden. Wählen Sie es erneut.</translation>
    </message>
    <message>
        <source>%1 does not allow this with the key (HTTP %2).</source>
        <translation>%1 erlaubt das mit diesem Schlüssel nicht (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 does not know this voice or model (HTTP %2).</source>
        <translation>%1 kennt diese Stimme oder dieses Modell nicht (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is asked too often or the account&apos;s quota is used up; try again later (HTTP %2).</source>
        <translation>%1 wurde zu oft angefragt, oder das Kontingent des Kontos ist aufgebraucht (HTTP %2). Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>%1 has trouble of its own; try again later (HTTP %2).</source>
        <translation>Bei %1 liegt eine Störung vor (HTTP %2). Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>%1 did not accept the text (HTTP %2).</source>
        <translation>%1 hat den Text nicht angenommen (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 did not do as asked (HTTP %2).</source>
        <translation>%1 hat die Anfrage nicht ausgeführt (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 broke off the connection.</source>
        <translation>%1 hat die Verbindung abgebrochen.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>%1 ist nicht erreichbar: %2.</translation>
    </message>
    <message>
        <source>the proxy does not allow it</source>
        <translation>der Proxy erlaubt es nicht</translation>
    </message>
    <message>
        <source>%1 cannot be trusted: its certificate is not valid.</source>
        <translation>%1 ist nicht vertrauenswürdig: Das Zertifikat ist ungültig.</translation>
    </message>
    <message>
        <source>This choice is kept only until Tavin ends: %1.</source>
        <translation>Diese Auswahl wird nur bis zum Beenden von Tavin behalten: %1.</translation>
    </message>
    <message>
        <source>The engine could not read this text.</source>
        <translation>Die Sprachausgabe konnte diesen Text nicht vorlesen.</translation>
    </message>
    <message>
        <source>The keyring is locked.</source>
        <translation>Der Schlüsselbund ist gesperrt.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</source>
        <translation>Die Bibliotheken von %1 können nicht geladen werden (%2). Wählen Sie %3 erneut.</translation>
    </message>
    <message>
        <source>eSpeak NG is not installed (package libespeak-ng1).</source>
        <translation>eSpeak NG ist nicht installiert (Paket libespeak-ng1).</translation>
    </message>
    <message>
        <source>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</source>
        <translation>%1 verweigert das Herunterladen (Antwort %2). Wählen Sie %3 später erneut oder aktualisieren Sie Tavin.</translation>
    </message>
    <message>
        <source>Getting the voices stopped unexpectedly (%1). Choose %2 again.</source>
        <translation>Das Herunterladen der Stimmen wurde unerwartet beendet (%1). Wählen Sie %2 erneut.</translation>
    </message>
    <message>
        <source>it ended too early</source>
        <translation>die Übertragung endete zu früh</translation>
    </message>
    <message>
        <source>it went on at another place</source>
        <translation>die Übertragung wurde an anderer Stelle fortgesetzt</translation>
    </message>
    <message>
        <source>something else was sent</source>
        <translation>es wurde etwas anderes gesendet</translation>
    </message>
    <message>
        <source>it is too slow</source>
        <translation>die Übertragung ist zu langsam</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>keine Antwort</translation>
    </message>
    <message>
        <source>answer %1</source>
        <translation>Antwort %1</translation>
    </message>
    <message>
        <source>No sound output is connected.</source>
        <translation>Es ist keine Tonausgabe angeschlossen.</translation>
    </message>
    <message>
        <source>The sound output was disconnected.</source>
        <translation>Die Tonausgabe wurde getrennt.</translation>
    </message>
    <message>
        <source>The sound output could not be started (%1).</source>
        <translation>Die Tonausgabe konnte nicht gestartet werden (%1).</translation>
    </message>
    <message>
        <source>The sound output stopped unexpectedly (%1).</source>
        <translation>Die Tonausgabe wurde unerwartet beendet (%1).</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>%1 konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>%1 could not be started (%2).</source>
        <translation>%1 konnte nicht gestartet werden (%2).</translation>
    </message>
    <message>
        <source>%1 stopped unexpectedly (%2) and was started again.</source>
        <translation>%1 wurde unerwartet beendet (%2) und neu gestartet.</translation>
    </message>
    <message>
        <source>%1 sent an answer that makes no sense.</source>
        <translation>%1 hat eine Antwort geschickt, die keinen Sinn ergibt.</translation>
    </message>
    <message>
        <source>%1 sent something other than sound.</source>
        <translation>%1 hat etwas anderes als Ton geschickt.</translation>
    </message>
    <message>
        <source>%1 sent more sound than the text can have.</source>
        <translation>%1 hat mehr Ton geschickt, als der Text haben kann.</translation>
    </message>
    <message>
        <source>%1 offers no voice to this account.</source>
        <translation>%1 bietet diesem Konto keine Stimme an.</translation>
    </message>
    <message>
        <source>%1 sent other files than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 hat andere Dateien geschickt als erwartet. Wählen Sie %2 erneut oder aktualisieren Sie Tavin.</translation>
    </message>
    <message>
        <source>%1 offers another file than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 bietet eine andere Datei an als erwartet. Wählen Sie %2 erneut oder aktualisieren Sie Tavin.</translation>
    </message>
    <message>
        <source>Choose this voice of Piper again: it cannot be loaded (%1).</source>
        <translation>Wählen Sie diese Stimme von Piper erneut: Sie kann nicht geladen werden (%1).</translation>
    </message>
    <message>
        <source>Choose Kokoro again: its files cannot be loaded (%1).</source>
        <translation>Wählen Sie Kokoro erneut: Seine Dateien können nicht geladen werden (%1).</translation>
    </message>
    <message>
        <source>Package python3-secretstorage is not installed.</source>
        <translation>Das Paket python3-secretstorage ist nicht installiert.</translation>
    </message>
    <message>
        <source>Without a session bus, the keyring cannot be reached.</source>
        <translation>Der Schlüsselbund ist nicht erreichbar: Es gibt keinen Sitzungsbus.</translation>
    </message>
    <message>
        <source>The keyring could not be asked.</source>
        <translation>Der Schlüsselbund konnte nicht gefragt werden.</translation>
    </message>
    <message>
        <source>What is stored there is not a key.</source>
        <translation>Was dort gespeichert ist, ist kein Schlüssel.</translation>
    </message>
    <message>
        <source>eSpeak NG&apos;s data is missing (package espeak-ng-data).</source>
        <translation>Die Daten von eSpeak NG fehlen (Paket espeak-ng-data).</translation>
    </message>
</context>
<context>
    <name>Login</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>Der Ordner %1 konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 konnte nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>%1 could not be removed: %2</source>
        <translation>%1 konnte nicht entfernt werden: %2</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Hear a second, robotic voice too?</source>
        <translation>⌥ ist Alt, ⌃ ist Strg, ⇧ ist Umschalt.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <translation>Manche Desktops nutzen Alt+Esc selbst.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <translation>Dann wählen Sie ⌃ Esc oder ⌃⌥ R oder ändern Sie das</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <translation>in den Tastatureinstellungen des Desktops.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>GNOME</comment>
        <translation>GNOME wechselt mit Alt+Esc zwischen Fenstern.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>GNOME</comment>
        <translation>Wählen Sie ⌃ Esc oder ändern Sie das Kürzel unter</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>GNOME</comment>
        <translation>Einstellungen &gt; Tastatur.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Plasma</comment>
        <translation>Plasma selbst tut bei Alt+Esc nichts.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Plasma</comment>
        <translation>Hat es ein anderes Programm, ändern Sie das unter</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Plasma</comment>
        <translation>Systemeinstellungen &gt; Kurzbefehle.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Xfce</comment>
        <translation>Xfce selbst tut bei Alt+Esc nichts.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Xfce</comment>
        <translation>Hat es ein anderes Programm, ändern Sie das unter</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Xfce</comment>
        <translation>Einstellungen &gt; Tastatur.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>no shortcuts</comment>
        <translation>Dieser Desktop lässt Programmen keine Tastenkürzel.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>no shortcuts</comment>
        <translation>Legen Sie in ihm selbst eine Taste für Tavin fest:</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>no shortcuts</comment>
        <translation>siehe „man tavin“.</translation>
    </message>
    <message>
        <source>Voice engine starting…</source>
        <translation>Sprachausgabe startet …</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Speak Selection</source>
        <translation>Auswahl vorlesen</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <translation>⚠︎ %1 ist vom Desktop oder einem anderen Programm belegt</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <comment>no shortcuts</comment>
        <translation>⚠︎ %1 wirkt nicht: keine Tastenkürzel auf diesem Desktop</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Tastenkürzel: %1</translation>
    </message>
    <message>
        <source>Loading voices…</source>
        <translation>Stimmen werden geladen …</translation>
    </message>
    <message>
        <source>⚠︎ Voice setup failed: %1</source>
        <translation>⚠︎ Stimme nicht eingerichtet: %1</translation>
    </message>
    <message>
        <source>Downloading voices… %1%</source>
        <translation>Stimmen werden heruntergeladen … %1&#xa0;%</translation>
    </message>
    <message>
        <source>%1 (add API key)</source>
        <translation>%1 (API-Schlüssel angeben)</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>Sprachausgabe: %1</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Wird geladen …</translation>
    </message>
    <message>
        <source>Voice: %1</source>
        <translation>Stimme: %1</translation>
    </message>
    <message>
        <source>Speed: %1</source>
        <translation>Tempo: %1</translation>
    </message>
    <message>
        <source>Set API Key</source>
        <translation>API-Schlüssel festlegen</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Open Engine Log</source>
        <translation>Protokoll der Sprachausgabe öffnen</translation>
    </message>
    <message>
        <source>Quit Tavin</source>
        <translation>Tavin beenden</translation>
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
        <translation>Pausieren oder fortsetzen</translation>
    </message>
    <message>
        <source>Speak Selection or Stop</source>
        <translation>Auswahl vorlesen oder stoppen</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>Nothing to read</source>
        <translation>Nichts vorzulesen</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Reading or paused</source>
        <translation>Liest vor oder ist angehalten</translation>
    </message>
    <message>
        <source>Not reading</source>
        <translation>Liest nicht vor</translation>
    </message>
</context>
</TS>
