<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="nl">
<context>
    <name>Alert</name>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <translation>Tavin leest de geselecteerde tekst van andere programma’s via de toegankelijkheidsinterface, en die staat uit. Sluit Tavin af en start het opnieuw: het zet de interface aan. Of schakel de ondersteunende technologieën in bij de instellingen van de werkomgeving. Programma’s die al draaien moeten misschien ook opnieuw worden gestart.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>GNOME</comment>
        <translation>Tavin leest de geselecteerde tekst van andere programma’s via de toegankelijkheidsinterface, en die staat uit. Sluit Tavin af en start het opnieuw: het zet de interface aan. De schermlezer in Instellingen &gt; Toegankelijkheid doet dat ook. Programma’s die al draaien moeten misschien opnieuw worden gestart.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>Plasma</comment>
        <translation>Tavin leest de geselecteerde tekst van andere programma’s via de toegankelijkheidsinterface, en die staat uit. Sluit Tavin af en start het opnieuw: het zet de interface aan. De schermlezer in Systeeminstellingen &gt; Toegankelijkheid doet dat ook. Programma’s die al draaien moeten misschien opnieuw worden gestart.</translation>
    </message>
    <message>
        <source>Tavin couldn&apos;t read that</source>
        <translation>Tavin kon dat niet voorlezen</translation>
    </message>
    <message>
        <source>Tavin needs Accessibility access</source>
        <translation>Tavin heeft de toegankelijkheidsinterface nodig</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Instellingen openen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuleren</translation>
    </message>
    <message>
        <source>Tavin is downloading its voices (%1%). This happens once.</source>
        <translation>Tavin downloadt de stemmen (%1%). Dit gebeurt maar één keer.</translation>
    </message>
    <message>
        <source>Voice setup failed: %1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Tavin is still loading its voices. Try again in a few seconds.</source>
        <translation>Tavin is de stemmen nog aan het laden. Probeer het over een paar seconden opnieuw.</translation>
    </message>
    <message>
        <source>%1 API key</source>
        <translation>API-sleutel van %1</translation>
    </message>
    <message>
        <source>Stored in your macOS Keychain. Leave empty to remove the key.</source>
        <translation>Wordt in uw sleutelbos bewaard. Laat leeg om de sleutel te verwijderen.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Opslaan</translation>
    </message>
    <message>
        <source>Launch at Login failed: %1</source>
        <translation>Starten bij aanmelden kon niet worden gewijzigd: %1</translation>
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
        <translation>%1 heeft een sleutel nodig: kies ‘API-sleutel instellen’ in het menu van Tavin.</translation>
    </message>
    <message>
        <source>%1 does not accept the key (HTTP %2).</source>
        <translation>%1 accepteert de sleutel niet (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 wants to be paid: the account has no credit left (HTTP %2).</source>
        <translation>Het account bij %1 heeft geen tegoed meer (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 says that the account&apos;s quota is used up (HTTP %2).</source>
        <translation>%1 meldt dat de limiet van het account is bereikt (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is too slow or does not answer.</source>
        <translation>%1 is te traag of reageert niet.</translation>
    </message>
    <message>
        <source>%1 cannot be found; this computer may be offline.</source>
        <translation>%1 is niet te vinden. Is deze computer online?</translation>
    </message>
    <message>
        <source>%1 cannot read this text.</source>
        <translation>%1 kan deze tekst niet voorlezen.</translation>
    </message>
    <message>
        <source>No voice on this computer speaks %1.</source>
        <translation>Geen stem op deze computer spreekt de taal ‘%1’.</translation>
    </message>
    <message>
        <source>%1 is still downloading its voices (%2%).</source>
        <translation>%1 is de stemmen nog aan het downloaden (%2%).</translation>
    </message>
    <message>
        <source>%1 is still loading its voices.</source>
        <translation>%1 is de stemmen nog aan het laden.</translation>
    </message>
    <message>
        <source>The key for %1 cannot be read: %2</source>
        <translation>De sleutel van %1 kan niet worden gelezen: %2</translation>
    </message>
    <message>
        <source>The key for %1 is kept only until Tavin ends: %2</source>
        <translation>De sleutel van %1 wordt alleen bewaard tot Tavin stopt: %2</translation>
    </message>
    <message>
        <source>The key for %1 could not be removed: %2</source>
        <translation>De sleutel van %1 kon niet worden verwijderd: %2</translation>
    </message>
    <message>
        <source>The keyring was not unlocked.</source>
        <translation>De sleutelbos is niet ontgrendeld.</translation>
    </message>
    <message>
        <source>The keyring does not answer.</source>
        <translation>De sleutelbos reageert niet.</translation>
    </message>
    <message>
        <source>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</source>
        <translation>Deze werkomgeving heeft geen sleutelbos zoals GNOME Keyring of KWallet.</translation>
    </message>
    <message>
        <source>The sound server does not answer.</source>
        <translation>De geluidsserver reageert niet.</translation>
    </message>
    <message>
        <source>The sound output could not be started.</source>
        <translation>De geluidsuitvoer kon niet worden gestart.</translation>
    </message>
    <message>
        <source>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</source>
        <translation>Python’s pip ontbreekt: installeer het pakket python3-venv en kies %1 opnieuw.</translation>
    </message>
    <message>
        <source>The disk is full: make room in %1, then choose %2 again.</source>
        <translation>De schijf is vol: maak ruimte in %1 en kies %2 opnieuw.</translation>
    </message>
    <message>
        <source>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</source>
        <translation>%1 heeft %2 MB nodig in %3, en er is %4 MB vrij. Maak ruimte en kies %5 opnieuw.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2. See to it, then choose %3 again.</source>
        <translation>In %1 kan niet worden geschreven: %2. Verhelp dat en kies %3 opnieuw.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</source>
        <translation>De bibliotheken van %1 konden niet worden gedownload. Controleer het netwerk en kies %2 opnieuw.</translation>
    </message>
    <message>
        <source>No download from %1: %2. Check the network, then choose %3 again.</source>
        <translation>Downloaden van %1 is mislukt: %2. Controleer het netwerk en kies %3 opnieuw.</translation>
    </message>
    <message>
        <source>Getting the voices takes too long. Choose %1 again.</source>
        <translation>Het downloaden van de stemmen duurt te lang. Kies %1 opnieuw.</translation>
    </message>
    <message>
        <source>%1 could not be set up. Choose it again.</source>
        <translation>%1 kon niet worden ingesteld. Kies het opnieuw.</translation>
    </message>
    <message>
        <source>%1 does not allow this with the key (HTTP %2).</source>
        <translation>%1 staat dit met deze sleutel niet toe (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 does not know this voice or model (HTTP %2).</source>
        <translation>%1 kent deze stem of dit model niet (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is asked too often or the account&apos;s quota is used up; try again later (HTTP %2).</source>
        <translation>%1 krijgt te veel verzoeken, of de limiet van het account is bereikt (HTTP %2). Probeer het later opnieuw.</translation>
    </message>
    <message>
        <source>%1 has trouble of its own; try again later (HTTP %2).</source>
        <translation>%1 heeft een storing (HTTP %2). Probeer het later opnieuw.</translation>
    </message>
    <message>
        <source>%1 did not accept the text (HTTP %2).</source>
        <translation>%1 heeft de tekst niet geaccepteerd (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 did not do as asked (HTTP %2).</source>
        <translation>%1 heeft het verzoek niet uitgevoerd (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 broke off the connection.</source>
        <translation>%1 heeft de verbinding verbroken.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>%1 is niet bereikbaar: %2.</translation>
    </message>
    <message>
        <source>the proxy does not allow it</source>
        <translation>de proxy staat het niet toe</translation>
    </message>
    <message>
        <source>%1 cannot be trusted: its certificate is not valid.</source>
        <translation>%1 is niet te vertrouwen: het certificaat is ongeldig.</translation>
    </message>
    <message>
        <source>This choice is kept only until Tavin ends: %1.</source>
        <translation>Deze keuze wordt alleen bewaard tot Tavin stopt: %1.</translation>
    </message>
    <message>
        <source>The engine could not read this text.</source>
        <translation>De spraakmodule kon deze tekst niet voorlezen.</translation>
    </message>
    <message>
        <source>The keyring is locked.</source>
        <translation>De sleutelbos is vergrendeld.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</source>
        <translation>De bibliotheken van %1 kunnen niet worden geladen (%2). Kies %3 opnieuw.</translation>
    </message>
    <message>
        <source>eSpeak NG is not installed (package libespeak-ng1).</source>
        <translation>eSpeak NG is niet geïnstalleerd (pakket libespeak-ng1).</translation>
    </message>
    <message>
        <source>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</source>
        <translation>%1 weigert de download (antwoord %2). Kies %3 later opnieuw of werk Tavin bij.</translation>
    </message>
    <message>
        <source>Getting the voices stopped unexpectedly (%1). Choose %2 again.</source>
        <translation>Het downloaden van de stemmen is onverwacht gestopt (%1). Kies %2 opnieuw.</translation>
    </message>
    <message>
        <source>it ended too early</source>
        <translation>de overdracht eindigde te vroeg</translation>
    </message>
    <message>
        <source>it went on at another place</source>
        <translation>de overdracht ging op een andere plaats verder</translation>
    </message>
    <message>
        <source>something else was sent</source>
        <translation>er is iets anders verzonden</translation>
    </message>
    <message>
        <source>it is too slow</source>
        <translation>de overdracht is te traag</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>geen antwoord</translation>
    </message>
    <message>
        <source>answer %1</source>
        <translation>antwoord %1</translation>
    </message>
    <message>
        <source>No sound output is connected.</source>
        <translation>Er is geen geluidsuitvoer aangesloten.</translation>
    </message>
    <message>
        <source>The sound output was disconnected.</source>
        <translation>De geluidsuitvoer is losgekoppeld.</translation>
    </message>
    <message>
        <source>The sound output could not be started (%1).</source>
        <translation>De geluidsuitvoer kon niet worden gestart (%1).</translation>
    </message>
    <message>
        <source>The sound output stopped unexpectedly (%1).</source>
        <translation>De geluidsuitvoer is onverwacht gestopt (%1).</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>%1 kon niet worden gestart.</translation>
    </message>
    <message>
        <source>%1 could not be started (%2).</source>
        <translation>%1 kon niet worden gestart (%2).</translation>
    </message>
    <message>
        <source>%1 stopped unexpectedly (%2) and was started again.</source>
        <translation>%1 is onverwacht gestopt (%2) en opnieuw gestart.</translation>
    </message>
    <message>
        <source>%1 sent an answer that makes no sense.</source>
        <translation>%1 stuurde een antwoord dat nergens op slaat.</translation>
    </message>
    <message>
        <source>%1 sent something other than sound.</source>
        <translation>%1 stuurde iets anders dan geluid.</translation>
    </message>
    <message>
        <source>%1 sent more sound than the text can have.</source>
        <translation>%1 stuurde meer geluid dan de tekst kan hebben.</translation>
    </message>
    <message>
        <source>%1 offers no voice to this account.</source>
        <translation>%1 biedt dit account geen stem.</translation>
    </message>
    <message>
        <source>%1 sent other files than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 stuurde andere bestanden dan verwacht. Kies %2 opnieuw of werk Tavin bij.</translation>
    </message>
    <message>
        <source>%1 offers another file than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 biedt een ander bestand dan verwacht. Kies %2 opnieuw of werk Tavin bij.</translation>
    </message>
    <message>
        <source>Choose this voice of Piper again: it cannot be loaded (%1).</source>
        <translation>Kies deze stem van Piper opnieuw: hij kan niet worden geladen (%1).</translation>
    </message>
    <message>
        <source>Choose Kokoro again: its files cannot be loaded (%1).</source>
        <translation>Kies Kokoro opnieuw: de bestanden kunnen niet worden geladen (%1).</translation>
    </message>
    <message>
        <source>Package python3-secretstorage is not installed.</source>
        <translation>Het pakket python3-secretstorage is niet geïnstalleerd.</translation>
    </message>
    <message>
        <source>Without a session bus, the keyring cannot be reached.</source>
        <translation>De sleutelbos is niet bereikbaar: er is geen sessiebus.</translation>
    </message>
    <message>
        <source>The keyring could not be asked.</source>
        <translation>De sleutelbos kon niet worden geraadpleegd.</translation>
    </message>
    <message>
        <source>What is stored there is not a key.</source>
        <translation>Wat daar is opgeslagen, is geen sleutel.</translation>
    </message>
    <message>
        <source>eSpeak NG&apos;s data is missing (package espeak-ng-data).</source>
        <translation>De gegevens van eSpeak NG ontbreken (pakket espeak-ng-data).</translation>
    </message>
</context>
<context>
    <name>Login</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>De map %1 kon niet worden gemaakt.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 kon niet worden geschreven: %2</translation>
    </message>
    <message>
        <source>%1 could not be removed: %2</source>
        <translation>%1 kon niet worden verwijderd: %2</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Hear a second, robotic voice too?</source>
        <translation>⌥ is Alt, ⌃ is Ctrl, ⇧ is Shift.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <translation>Sommige werkomgevingen gebruiken Alt+Escape zelf.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <translation>Kies dan ⌃ Esc of ⌃⌥ R, of wijzig het</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <translation>in de toetsenbordinstellingen.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>GNOME</comment>
        <translation>GNOME wisselt van venster met Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>GNOME</comment>
        <translation>Kies ⌃ Esc, of wijzig de sneltoets van GNOME in</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>GNOME</comment>
        <translation>Instellingen &gt; Toetsenbord.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Plasma</comment>
        <translation>Plasma zelf doet niets met Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Plasma</comment>
        <translation>Gebruikt een ander programma het, wijzig dat in</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Plasma</comment>
        <translation>Systeeminstellingen &gt; Sneltoetsen.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Xfce</comment>
        <translation>Xfce zelf doet niets met Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Xfce</comment>
        <translation>Gebruikt een ander programma het, wijzig dat in</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Xfce</comment>
        <translation>Instellingen &gt; Toetsenbord.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>no shortcuts</comment>
        <translation>Deze werkomgeving geeft programma’s geen sneltoetsen.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>no shortcuts</comment>
        <translation>Stel in de werkomgeving zelf een sneltoets voor Tavin in:</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>no shortcuts</comment>
        <translation>zie ‘man tavin’.</translation>
    </message>
    <message>
        <source>Voice engine starting…</source>
        <translation>Spraakmodule start…</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Speak Selection</source>
        <translation>Selectie voorlezen</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Hervatten</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pauzeren</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <translation>⚠︎ %1 is in gebruik door de werkomgeving of een ander programma</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <comment>no shortcuts</comment>
        <translation>⚠︎ %1 werkt niet: deze werkomgeving biedt geen sneltoetsen</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Sneltoets: %1</translation>
    </message>
    <message>
        <source>Loading voices…</source>
        <translation>Stemmen laden…</translation>
    </message>
    <message>
        <source>⚠︎ Voice setup failed: %1</source>
        <translation>⚠︎ Stem instellen is mislukt: %1</translation>
    </message>
    <message>
        <source>Downloading voices… %1%</source>
        <translation>Stemmen downloaden… %1%</translation>
    </message>
    <message>
        <source>%1 (add API key)</source>
        <translation>%1 (API-sleutel toevoegen)</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>Spraakmodule: %1</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Laden…</translation>
    </message>
    <message>
        <source>Voice: %1</source>
        <translation>Stem: %1</translation>
    </message>
    <message>
        <source>Speed: %1</source>
        <translation>Snelheid: %1</translation>
    </message>
    <message>
        <source>Set API Key</source>
        <translation>API-sleutel instellen</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Starten bij aanmelden</translation>
    </message>
    <message>
        <source>Open Engine Log</source>
        <translation>Logboek van de spraakmodule openen</translation>
    </message>
    <message>
        <source>Quit Tavin</source>
        <translation>Tavin afsluiten</translation>
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
        <translation>Pauzeren of hervatten</translation>
    </message>
    <message>
        <source>Speak Selection or Stop</source>
        <translation>Selectie voorlezen of stoppen</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>Nothing to read</source>
        <translation>Niets om voor te lezen</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Reading or paused</source>
        <translation>Leest voor of is gepauzeerd</translation>
    </message>
    <message>
        <source>Not reading</source>
        <translation>Leest niet voor</translation>
    </message>
</context>
</TS>
