<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it">
<context>
    <name>Alert</name>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <translation>Tavin legge il testo selezionato negli altri programmi tramite l’interfaccia di accessibilità, che è disattivata. Uscire da Tavin e riavviarlo: attiverà l’interfaccia. Oppure abilitare le tecnologie assistive nelle impostazioni del desktop. Potrebbe essere necessario riavviare anche i programmi già aperti.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>GNOME</comment>
        <translation>Tavin legge il testo selezionato negli altri programmi tramite l’interfaccia di accessibilità, che è disattivata. Uscire da Tavin e riavviarlo: attiverà l’interfaccia. La attiva anche il lettore schermo in Impostazioni &gt; Accessibilità. Potrebbe essere necessario riavviare i programmi già aperti.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>Plasma</comment>
        <translation>Tavin legge il testo selezionato negli altri programmi tramite l’interfaccia di accessibilità, che è disattivata. Uscire da Tavin e riavviarlo: attiverà l’interfaccia. La attiva anche il lettore schermo in Impostazioni di sistema &gt; Accessibilità. Potrebbe essere necessario riavviare i programmi già aperti.</translation>
    </message>
    <message>
        <source>Tavin couldn&apos;t read that</source>
        <translation>Tavin non è riuscito a leggere il testo</translation>
    </message>
    <message>
        <source>Tavin needs Accessibility access</source>
        <translation>Tavin ha bisogno dell’interfaccia di accessibilità</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Apri le impostazioni</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Tavin is downloading its voices (%1%). This happens once.</source>
        <translation>Tavin sta scaricando le voci (%1%). Succede una volta sola.</translation>
    </message>
    <message>
        <source>Voice setup failed: %1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Tavin is still loading its voices. Try again in a few seconds.</source>
        <translation>Tavin sta ancora caricando le voci. Riprovare tra qualche secondo.</translation>
    </message>
    <message>
        <source>%1 API key</source>
        <translation>Chiave API di %1</translation>
    </message>
    <message>
        <source>Stored in your macOS Keychain. Leave empty to remove the key.</source>
        <translation>Viene salvata nel portachiavi. Lasciare vuoto per rimuoverla.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Salva</translation>
    </message>
    <message>
        <source>Launch at Login failed: %1</source>
        <translation>Impossibile modificare l’avvio all’accesso: %1</translation>
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
        <translation>%1 richiede una chiave: scegliere “Imposta chiave API” nel menu di Tavin.</translation>
    </message>
    <message>
        <source>%1 does not accept the key (HTTP %2).</source>
        <translation>%1 non accetta la chiave (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 wants to be paid: the account has no credit left (HTTP %2).</source>
        <translation>L’account di %1 non ha più credito (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 says that the account&apos;s quota is used up (HTTP %2).</source>
        <translation>%1 segnala che la quota dell’account è esaurita (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is too slow or does not answer.</source>
        <translation>%1 è troppo lento o non risponde.</translation>
    </message>
    <message>
        <source>%1 cannot be found; this computer may be offline.</source>
        <translation>Impossibile trovare %1. Questo computer è in linea?</translation>
    </message>
    <message>
        <source>%1 cannot read this text.</source>
        <translation>%1 non riesce a leggere questo testo.</translation>
    </message>
    <message>
        <source>No voice on this computer speaks %1.</source>
        <translation>Nessuna voce di questo computer parla la lingua “%1”.</translation>
    </message>
    <message>
        <source>%1 is still downloading its voices (%2%).</source>
        <translation>%1 sta ancora scaricando le voci (%2%).</translation>
    </message>
    <message>
        <source>%1 is still loading its voices.</source>
        <translation>%1 sta ancora caricando le voci.</translation>
    </message>
    <message>
        <source>The key for %1 cannot be read: %2</source>
        <translation>Impossibile leggere la chiave di %1: %2</translation>
    </message>
    <message>
        <source>The key for %1 is kept only until Tavin ends: %2</source>
        <translation>La chiave di %1 resta solo fino alla chiusura di Tavin: %2</translation>
    </message>
    <message>
        <source>The key for %1 could not be removed: %2</source>
        <translation>Impossibile rimuovere la chiave di %1: %2</translation>
    </message>
    <message>
        <source>The keyring was not unlocked.</source>
        <translation>Il portachiavi non è stato sbloccato.</translation>
    </message>
    <message>
        <source>The keyring does not answer.</source>
        <translation>Il portachiavi non risponde.</translation>
    </message>
    <message>
        <source>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</source>
        <translation>Questo desktop non ha un portachiavi come GNOME Keyring o KWallet.</translation>
    </message>
    <message>
        <source>The sound server does not answer.</source>
        <translation>Il server audio non risponde.</translation>
    </message>
    <message>
        <source>The sound output could not be started.</source>
        <translation>Impossibile avviare l’uscita audio.</translation>
    </message>
    <message>
        <source>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</source>
        <translation>Manca pip di Python: installare il pacchetto python3-venv, poi scegliere di nuovo %1.</translation>
    </message>
    <message>
        <source>The disk is full: make room in %1, then choose %2 again.</source>
        <translation>Il disco è pieno: liberare spazio in %1, poi scegliere di nuovo %2.</translation>
    </message>
    <message>
        <source>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</source>
        <translation>%1 richiede %2 MB in %3 e ne sono liberi %4. Liberare spazio, poi scegliere di nuovo %5.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2. See to it, then choose %3 again.</source>
        <translation>Impossibile scrivere in %1: %2. Rimediare, poi scegliere di nuovo %3.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</source>
        <translation>Impossibile scaricare le librerie di %1. Controllare la rete, poi scegliere di nuovo %2.</translation>
    </message>
    <message>
        <source>No download from %1: %2. Check the network, then choose %3 again.</source>
        <translation>Impossibile scaricare da %1: %2. Controllare la rete, poi scegliere di nuovo %3.</translation>
    </message>
    <message>
        <source>Getting the voices takes too long. Choose %1 again.</source>
        <translation>Lo scaricamento delle voci richiede troppo tempo. Scegliere di nuovo %1.</translation>
    </message>
    <message>
        <source>%1 could not be set up. Choose it again.</source>
        <translation>Impossibile preparare %1. Sceglierlo di nuovo.</translation>
    </message>
    <message>
        <source>%1 does not allow this with the key (HTTP %2).</source>
        <translation>%1 non lo consente con questa chiave (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 does not know this voice or model (HTTP %2).</source>
        <translation>%1 non conosce questa voce o questo modello (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is asked too often or the account&apos;s quota is used up; try again later (HTTP %2).</source>
        <translation>%1 riceve troppe richieste o la quota dell’account è esaurita (HTTP %2). Riprovare più tardi.</translation>
    </message>
    <message>
        <source>%1 has trouble of its own; try again later (HTTP %2).</source>
        <translation>%1 ha un problema (HTTP %2). Riprovare più tardi.</translation>
    </message>
    <message>
        <source>%1 did not accept the text (HTTP %2).</source>
        <translation>%1 non ha accettato il testo (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 did not do as asked (HTTP %2).</source>
        <translation>%1 non ha eseguito la richiesta (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 broke off the connection.</source>
        <translation>%1 ha interrotto la connessione.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>Impossibile raggiungere %1: %2.</translation>
    </message>
    <message>
        <source>the proxy does not allow it</source>
        <translation>il proxy non lo consente</translation>
    </message>
    <message>
        <source>%1 cannot be trusted: its certificate is not valid.</source>
        <translation>%1 non è affidabile: il certificato non è valido.</translation>
    </message>
    <message>
        <source>This choice is kept only until Tavin ends: %1.</source>
        <translation>Questa scelta resta solo fino alla chiusura di Tavin: %1.</translation>
    </message>
    <message>
        <source>The engine could not read this text.</source>
        <translation>Il motore non è riuscito a leggere questo testo.</translation>
    </message>
    <message>
        <source>The keyring is locked.</source>
        <translation>Il portachiavi è bloccato.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</source>
        <translation>Impossibile caricare le librerie di %1 (%2). Scegliere di nuovo %3.</translation>
    </message>
    <message>
        <source>eSpeak NG is not installed (package libespeak-ng1).</source>
        <translation>eSpeak NG non è installato (pacchetto libespeak-ng1).</translation>
    </message>
    <message>
        <source>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</source>
        <translation>%1 rifiuta lo scaricamento (risposta %2). Scegliere di nuovo %3 più tardi o aggiornare Tavin.</translation>
    </message>
    <message>
        <source>Getting the voices stopped unexpectedly (%1). Choose %2 again.</source>
        <translation>Lo scaricamento delle voci si è interrotto in modo imprevisto (%1). Scegliere di nuovo %2.</translation>
    </message>
    <message>
        <source>it ended too early</source>
        <translation>il trasferimento è terminato troppo presto</translation>
    </message>
    <message>
        <source>it went on at another place</source>
        <translation>il trasferimento è proseguito da un altro punto</translation>
    </message>
    <message>
        <source>something else was sent</source>
        <translation>è stato inviato qualcos’altro</translation>
    </message>
    <message>
        <source>it is too slow</source>
        <translation>il trasferimento è troppo lento</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>nessuna risposta</translation>
    </message>
    <message>
        <source>answer %1</source>
        <translation>risposta %1</translation>
    </message>
    <message>
        <source>No sound output is connected.</source>
        <translation>Nessuna uscita audio è collegata.</translation>
    </message>
    <message>
        <source>The sound output was disconnected.</source>
        <translation>L’uscita audio è stata scollegata.</translation>
    </message>
    <message>
        <source>The sound output could not be started (%1).</source>
        <translation>Impossibile avviare l&apos;uscita audio (%1).</translation>
    </message>
    <message>
        <source>The sound output stopped unexpectedly (%1).</source>
        <translation>L&apos;uscita audio si è fermata in modo imprevisto (%1).</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>Impossibile avviare %1.</translation>
    </message>
    <message>
        <source>%1 could not be started (%2).</source>
        <translation>Impossibile avviare %1 (%2).</translation>
    </message>
    <message>
        <source>%1 stopped unexpectedly (%2) and was started again.</source>
        <translation>%1 si è fermato in modo imprevisto (%2) ed è stato riavviato.</translation>
    </message>
    <message>
        <source>%1 sent an answer that makes no sense.</source>
        <translation>%1 ha inviato una risposta priva di senso.</translation>
    </message>
    <message>
        <source>%1 sent something other than sound.</source>
        <translation>%1 ha inviato qualcosa che non è audio.</translation>
    </message>
    <message>
        <source>%1 sent more sound than the text can have.</source>
        <translation>%1 ha inviato più audio di quanto il testo possa averne.</translation>
    </message>
    <message>
        <source>%1 offers no voice to this account.</source>
        <translation>%1 non offre alcuna voce a questo account.</translation>
    </message>
    <message>
        <source>%1 sent other files than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 ha inviato file diversi dal previsto. Scegliere di nuovo %2 o aggiornare Tavin.</translation>
    </message>
    <message>
        <source>%1 offers another file than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 offre un file diverso dal previsto. Scegliere di nuovo %2 o aggiornare Tavin.</translation>
    </message>
    <message>
        <source>Choose this voice of Piper again: it cannot be loaded (%1).</source>
        <translation>Scegliere di nuovo questa voce di Piper: non si può caricare (%1).</translation>
    </message>
    <message>
        <source>Choose Kokoro again: its files cannot be loaded (%1).</source>
        <translation>Scegliere di nuovo Kokoro: i suoi file non si possono caricare (%1).</translation>
    </message>
    <message>
        <source>Package python3-secretstorage is not installed.</source>
        <translation>Il pacchetto python3-secretstorage non è installato.</translation>
    </message>
    <message>
        <source>Without a session bus, the keyring cannot be reached.</source>
        <translation>Il portachiavi non è raggiungibile: non c&apos;è un bus di sessione.</translation>
    </message>
    <message>
        <source>The keyring could not be asked.</source>
        <translation>Impossibile interrogare il portachiavi.</translation>
    </message>
    <message>
        <source>What is stored there is not a key.</source>
        <translation>Ciò che vi è salvato non è una chiave.</translation>
    </message>
    <message>
        <source>eSpeak NG&apos;s data is missing (package espeak-ng-data).</source>
        <translation>Mancano i dati di eSpeak NG (pacchetto espeak-ng-data).</translation>
    </message>
</context>
<context>
    <name>Login</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>Impossibile creare la cartella %1.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>Impossibile scrivere %1: %2</translation>
    </message>
    <message>
        <source>%1 could not be removed: %2</source>
        <translation>Impossibile rimuovere %1: %2</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Hear a second, robotic voice too?</source>
        <translation>⌥ è Alt, ⌃ è Ctrl, ⇧ è Maiusc.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <translation>Alcuni desktop usano Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <translation>In tal caso scegliere ⌃ Esc o ⌃⌥ R, o cambiarlo</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <translation>nelle impostazioni della tastiera.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>GNOME</comment>
        <translation>GNOME cambia finestra con Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>GNOME</comment>
        <translation>Scegliere ⌃ Esc, o cambiare la scorciatoia in</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>GNOME</comment>
        <translation>Impostazioni &gt; Tastiera.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Plasma</comment>
        <translation>Plasma non usa Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Plasma</comment>
        <translation>Se lo usa un altro programma, cambiarlo in</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Plasma</comment>
        <translation>Impostazioni di sistema &gt; Scorciatoie.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Xfce</comment>
        <translation>Xfce non usa Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Xfce</comment>
        <translation>Se lo usa un altro programma, cambiarlo in</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Xfce</comment>
        <translation>Impostazioni &gt; Tastiera.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>no shortcuts</comment>
        <translation>Questo desktop non offre scorciatoie ai programmi.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>no shortcuts</comment>
        <translation>Crearvi una scorciatoia che chiami Tavin:</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>no shortcuts</comment>
        <translation>vedere “man tavin”.</translation>
    </message>
    <message>
        <source>Voice engine starting…</source>
        <translation>Avvio del motore vocale…</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Ferma</translation>
    </message>
    <message>
        <source>Speak Selection</source>
        <translation>Leggi la selezione</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Riprendi</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausa</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <translation>⚠︎ %1 è usato dal desktop o da un altro programma</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <comment>no shortcuts</comment>
        <translation>⚠︎ %1 non funziona: questo desktop non offre scorciatoie</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Scorciatoia: %1</translation>
    </message>
    <message>
        <source>Loading voices…</source>
        <translation>Caricamento delle voci…</translation>
    </message>
    <message>
        <source>⚠︎ Voice setup failed: %1</source>
        <translation>⚠︎ Preparazione della voce non riuscita: %1</translation>
    </message>
    <message>
        <source>Downloading voices… %1%</source>
        <translation>Scaricamento delle voci… %1%</translation>
    </message>
    <message>
        <source>%1 (add API key)</source>
        <translation>%1 (aggiungi chiave API)</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>Motore: %1</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Caricamento…</translation>
    </message>
    <message>
        <source>Voice: %1</source>
        <translation>Voce: %1</translation>
    </message>
    <message>
        <source>Speed: %1</source>
        <translation>Velocità: %1</translation>
    </message>
    <message>
        <source>Set API Key</source>
        <translation>Imposta chiave API</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Avvia all’accesso</translation>
    </message>
    <message>
        <source>Open Engine Log</source>
        <translation>Apri il registro del motore</translation>
    </message>
    <message>
        <source>Quit Tavin</source>
        <translation>Esci da Tavin</translation>
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
        <translation>Pausa o riprendi</translation>
    </message>
    <message>
        <source>Speak Selection or Stop</source>
        <translation>Leggi la selezione o ferma</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>Nothing to read</source>
        <translation>Niente da leggere</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Reading or paused</source>
        <translation>Lettura in corso o in pausa</translation>
    </message>
    <message>
        <source>Not reading</source>
        <translation>Nessuna lettura in corso</translation>
    </message>
</context>
</TS>
