<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pl">
<context>
    <name>Alert</name>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <translation>Tavin odczytuje tekst zaznaczony w innych programach przez interfejs ułatwień dostępu, który jest wyłączony. Zakończ program Tavin i uruchom go ponownie: włączy on ten interfejs. Możesz też włączyć ułatwienia dostępu w ustawieniach środowiska. Programy już uruchomione być może też trzeba uruchomić ponownie.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>GNOME</comment>
        <translation>Tavin odczytuje tekst zaznaczony w innych programach przez interfejs ułatwień dostępu, który jest wyłączony. Zakończ program Tavin i uruchom go ponownie: włączy on ten interfejs. Włącza go też czytnik ekranowy w oknie Ustawienia &gt; Ułatwienia dostępu. Programy już uruchomione być może trzeba uruchomić ponownie.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>Plasma</comment>
        <translation>Tavin odczytuje tekst zaznaczony w innych programach przez interfejs ułatwień dostępu, który jest wyłączony. Zakończ program Tavin i uruchom go ponownie: włączy on ten interfejs. Włącza go też czytnik ekranowy w oknie Ustawienia systemowe &gt; Ułatwienia. Programy już uruchomione być może trzeba uruchomić ponownie.</translation>
    </message>
    <message>
        <source>Tavin couldn&apos;t read that</source>
        <translation>Nie udało się tego odczytać</translation>
    </message>
    <message>
        <source>Tavin needs Accessibility access</source>
        <translation>Tavin wymaga interfejsu ułatwień dostępu</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Otwórz ustawienia</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Anuluj</translation>
    </message>
    <message>
        <source>Tavin is downloading its voices (%1%). This happens once.</source>
        <translation>Tavin pobiera głosy (%1%). To jednorazowe pobieranie.</translation>
    </message>
    <message>
        <source>Voice setup failed: %1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Tavin is still loading its voices. Try again in a few seconds.</source>
        <translation>Tavin jeszcze wczytuje głosy. Spróbuj ponownie za kilka sekund.</translation>
    </message>
    <message>
        <source>%1 API key</source>
        <translation>Klucz API usługi %1</translation>
    </message>
    <message>
        <source>Stored in your macOS Keychain. Leave empty to remove the key.</source>
        <translation>Zostanie zapisany w bazie kluczy. Puste pole usuwa klucz.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Zapisz</translation>
    </message>
    <message>
        <source>Launch at Login failed: %1</source>
        <translation>Nie zmieniono uruchamiania przy logowaniu: %1</translation>
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
        <translation>%1 wymaga klucza: wybierz „Ustaw klucz API” w menu programu Tavin.</translation>
    </message>
    <message>
        <source>%1 does not accept the key (HTTP %2).</source>
        <translation>%1 nie przyjmuje klucza (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 wants to be paid: the account has no credit left (HTTP %2).</source>
        <translation>Na koncie %1 nie ma środków (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 says that the account&apos;s quota is used up (HTTP %2).</source>
        <translation>%1 zgłasza, że limit konta został wyczerpany (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is too slow or does not answer.</source>
        <translation>%1 działa zbyt wolno lub nie odpowiada.</translation>
    </message>
    <message>
        <source>%1 cannot be found; this computer may be offline.</source>
        <translation>Nie można znaleźć usługi %1. Czy komputer jest w sieci?</translation>
    </message>
    <message>
        <source>%1 cannot read this text.</source>
        <translation>%1 nie potrafi odczytać tego tekstu.</translation>
    </message>
    <message>
        <source>No voice on this computer speaks %1.</source>
        <translation>Żaden głos na tym komputerze nie mówi w języku „%1”.</translation>
    </message>
    <message>
        <source>%1 is still downloading its voices (%2%).</source>
        <translation>%1 jeszcze pobiera głosy (%2%).</translation>
    </message>
    <message>
        <source>%1 is still loading its voices.</source>
        <translation>%1 jeszcze wczytuje głosy.</translation>
    </message>
    <message>
        <source>The key for %1 cannot be read: %2</source>
        <translation>Nie można odczytać klucza usługi %1: %2</translation>
    </message>
    <message>
        <source>The key for %1 is kept only until Tavin ends: %2</source>
        <translation>Klucz usługi %1 jest pamiętany tylko do końca pracy programu: %2</translation>
    </message>
    <message>
        <source>The key for %1 could not be removed: %2</source>
        <translation>Nie można usunąć klucza usługi %1: %2</translation>
    </message>
    <message>
        <source>The keyring was not unlocked.</source>
        <translation>Baza kluczy nie została odblokowana.</translation>
    </message>
    <message>
        <source>The keyring does not answer.</source>
        <translation>Baza kluczy nie odpowiada.</translation>
    </message>
    <message>
        <source>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</source>
        <translation>To środowisko nie ma bazy kluczy, takiej jak GNOME Keyring lub KWallet.</translation>
    </message>
    <message>
        <source>The sound server does not answer.</source>
        <translation>Serwer dźwięku nie odpowiada.</translation>
    </message>
    <message>
        <source>The sound output could not be started.</source>
        <translation>Nie można uruchomić wyjścia dźwięku.</translation>
    </message>
    <message>
        <source>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</source>
        <translation>Brakuje programu pip: zainstaluj pakiet python3-venv i ponownie wybierz %1.</translation>
    </message>
    <message>
        <source>The disk is full: make room in %1, then choose %2 again.</source>
        <translation>Dysk jest pełny: zwolnij miejsce w %1 i ponownie wybierz %2.</translation>
    </message>
    <message>
        <source>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</source>
        <translation>%1 wymaga %2 MB w %3, a wolne są %4 MB. Zwolnij miejsce i ponownie wybierz %5.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2. See to it, then choose %3 again.</source>
        <translation>Nie można zapisywać w %1: %2. Napraw to i ponownie wybierz %3.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</source>
        <translation>Nie można pobrać bibliotek %1. Sprawdź sieć i ponownie wybierz %2.</translation>
    </message>
    <message>
        <source>No download from %1: %2. Check the network, then choose %3 again.</source>
        <translation>Nie można pobrać z %1: %2. Sprawdź sieć i ponownie wybierz %3.</translation>
    </message>
    <message>
        <source>Getting the voices takes too long. Choose %1 again.</source>
        <translation>Pobieranie głosów trwa zbyt długo. Ponownie wybierz %1.</translation>
    </message>
    <message>
        <source>%1 could not be set up. Choose it again.</source>
        <translation>Nie można przygotować %1. Wybierz ponownie.</translation>
    </message>
    <message>
        <source>%1 does not allow this with the key (HTTP %2).</source>
        <translation>%1 nie zezwala na to z tym kluczem (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 does not know this voice or model (HTTP %2).</source>
        <translation>%1 nie zna tego głosu lub modelu (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is asked too often or the account&apos;s quota is used up; try again later (HTTP %2).</source>
        <translation>%1 otrzymuje zbyt wiele żądań lub limit konta został wyczerpany (HTTP %2). Spróbuj ponownie później.</translation>
    </message>
    <message>
        <source>%1 has trouble of its own; try again later (HTTP %2).</source>
        <translation>%1 ma problemy (HTTP %2). Spróbuj ponownie później.</translation>
    </message>
    <message>
        <source>%1 did not accept the text (HTTP %2).</source>
        <translation>%1 nie przyjmuje tego tekstu (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 did not do as asked (HTTP %2).</source>
        <translation>%1 nie realizuje tego żądania (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 broke off the connection.</source>
        <translation>Usługa %1 przerwała połączenie.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>Nie można połączyć się z usługą %1: %2.</translation>
    </message>
    <message>
        <source>the proxy does not allow it</source>
        <translation>serwer pośredniczący na to nie pozwala</translation>
    </message>
    <message>
        <source>%1 cannot be trusted: its certificate is not valid.</source>
        <translation>Nie można zaufać usłudze %1: jej certyfikat jest nieprawidłowy.</translation>
    </message>
    <message>
        <source>This choice is kept only until Tavin ends: %1.</source>
        <translation>Ten wybór jest pamiętany tylko do końca pracy programu: %1.</translation>
    </message>
    <message>
        <source>The engine could not read this text.</source>
        <translation>Syntezator nie mógł odczytać tego tekstu.</translation>
    </message>
    <message>
        <source>The keyring is locked.</source>
        <translation>Baza kluczy jest zablokowana.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</source>
        <translation>Nie można wczytać bibliotek %1 (%2). Ponownie wybierz %3.</translation>
    </message>
    <message>
        <source>eSpeak NG is not installed (package libespeak-ng1).</source>
        <translation>Program eSpeak NG nie jest zainstalowany (pakiet libespeak-ng1).</translation>
    </message>
    <message>
        <source>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</source>
        <translation>%1 odmawia pobrania (odpowiedź %2). Później ponownie wybierz %3 lub zaktualizuj program Tavin.</translation>
    </message>
    <message>
        <source>Getting the voices stopped unexpectedly (%1). Choose %2 again.</source>
        <translation>Pobieranie głosów nieoczekiwanie się zakończyło (%1). Ponownie wybierz %2.</translation>
    </message>
    <message>
        <source>it ended too early</source>
        <translation>przesyłanie zakończyło się zbyt wcześnie</translation>
    </message>
    <message>
        <source>it went on at another place</source>
        <translation>przesyłanie wznowiono w innym miejscu</translation>
    </message>
    <message>
        <source>something else was sent</source>
        <translation>przesłano coś innego</translation>
    </message>
    <message>
        <source>it is too slow</source>
        <translation>przesyłanie jest zbyt wolne</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>brak odpowiedzi</translation>
    </message>
    <message>
        <source>answer %1</source>
        <translation>odpowiedź %1</translation>
    </message>
    <message>
        <source>No sound output is connected.</source>
        <translation>Nie podłączono żadnego wyjścia dźwięku.</translation>
    </message>
    <message>
        <source>The sound output was disconnected.</source>
        <translation>Wyjście dźwięku zostało odłączone.</translation>
    </message>
    <message>
        <source>The sound output could not be started (%1).</source>
        <translation>Nie udało się uruchomić wyjścia dźwięku (%1).</translation>
    </message>
    <message>
        <source>The sound output stopped unexpectedly (%1).</source>
        <translation>Wyjście dźwięku nieoczekiwanie się zatrzymało (%1).</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>Nie udało się uruchomić: %1.</translation>
    </message>
    <message>
        <source>%1 could not be started (%2).</source>
        <translation>Nie udało się uruchomić: %1 (%2).</translation>
    </message>
    <message>
        <source>%1 stopped unexpectedly (%2) and was started again.</source>
        <translation>%1: nieoczekiwane zatrzymanie (%2) i ponowne uruchomienie.</translation>
    </message>
    <message>
        <source>%1 sent an answer that makes no sense.</source>
        <translation>%1: otrzymano odpowiedź, która nie ma sensu.</translation>
    </message>
    <message>
        <source>%1 sent something other than sound.</source>
        <translation>%1: otrzymano coś innego niż dźwięk.</translation>
    </message>
    <message>
        <source>%1 sent more sound than the text can have.</source>
        <translation>%1: otrzymano więcej dźwięku, niż może mieć ten tekst.</translation>
    </message>
    <message>
        <source>%1 offers no voice to this account.</source>
        <translation>%1 nie udostępnia temu kontu żadnego głosu.</translation>
    </message>
    <message>
        <source>%1 sent other files than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1: otrzymano inne pliki niż oczekiwano. Wybierz ponownie %2 lub zaktualizuj Tavin.</translation>
    </message>
    <message>
        <source>%1 offers another file than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1: dostępny jest inny plik niż oczekiwano. Wybierz ponownie %2 lub zaktualizuj Tavin.</translation>
    </message>
    <message>
        <source>Choose this voice of Piper again: it cannot be loaded (%1).</source>
        <translation>Wybierz ponownie ten głos Pipera: nie można go wczytać (%1).</translation>
    </message>
    <message>
        <source>Choose Kokoro again: its files cannot be loaded (%1).</source>
        <translation>Wybierz ponownie Kokoro: nie można wczytać jego plików (%1).</translation>
    </message>
    <message>
        <source>Package python3-secretstorage is not installed.</source>
        <translation>Pakiet python3-secretstorage nie jest zainstalowany.</translation>
    </message>
    <message>
        <source>Without a session bus, the keyring cannot be reached.</source>
        <translation>Baza kluczy jest niedostępna: nie ma magistrali sesji.</translation>
    </message>
    <message>
        <source>The keyring could not be asked.</source>
        <translation>Nie udało się odpytać bazy kluczy.</translation>
    </message>
    <message>
        <source>What is stored there is not a key.</source>
        <translation>To, co tam zapisano, nie jest kluczem.</translation>
    </message>
    <message>
        <source>eSpeak NG&apos;s data is missing (package espeak-ng-data).</source>
        <translation>Brak danych eSpeak NG (pakiet espeak-ng-data).</translation>
    </message>
</context>
<context>
    <name>Login</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>Nie można utworzyć katalogu %1.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>Nie można zapisać %1: %2</translation>
    </message>
    <message>
        <source>%1 could not be removed: %2</source>
        <translation>Nie można usunąć %1: %2</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Hear a second, robotic voice too?</source>
        <translation>⌥ to Alt, ⌃ to Ctrl, ⇧ to Shift.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <translation>Niektóre środowiska używają Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <translation>Wybierz wtedy ⌃ Esc lub ⌃⌥ R albo zmień to</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <translation>w ustawieniach klawiatury.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>GNOME</comment>
        <translation>GNOME przełącza okna skrótem Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>GNOME</comment>
        <translation>Wybierz ⌃ Esc albo zmień skrót GNOME w oknie</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>GNOME</comment>
        <translation>Ustawienia &gt; Klawiatura.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Plasma</comment>
        <translation>Plasma nie używa skrótu Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Plasma</comment>
        <translation>Jeśli używa go inny program, zmień to w oknie</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Plasma</comment>
        <translation>Ustawienia systemowe &gt; Skróty.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Xfce</comment>
        <translation>Xfce nie używa skrótu Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Xfce</comment>
        <translation>Jeśli używa go inny program, zmień to w oknie</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Xfce</comment>
        <translation>Ustawienia &gt; Klawiatura.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>no shortcuts</comment>
        <translation>To środowisko nie udostępnia programom skrótów.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>no shortcuts</comment>
        <translation>Utwórz w nim skrót wywołujący program Tavin:</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>no shortcuts</comment>
        <translation>zobacz „man tavin”.</translation>
    </message>
    <message>
        <source>Voice engine starting…</source>
        <translation>Uruchamianie syntezatora mowy…</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Zatrzymaj</translation>
    </message>
    <message>
        <source>Speak Selection</source>
        <translation>Odczytaj zaznaczenie</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Wznów</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Wstrzymaj</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <translation>⚠︎ %1 jest zajęty przez środowisko lub inny program</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <comment>no shortcuts</comment>
        <translation>⚠︎ %1 nie działa: to środowisko nie udostępnia skrótów</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Skrót: %1</translation>
    </message>
    <message>
        <source>Loading voices…</source>
        <translation>Wczytywanie głosów…</translation>
    </message>
    <message>
        <source>⚠︎ Voice setup failed: %1</source>
        <translation>⚠︎ Nie przygotowano głosu: %1</translation>
    </message>
    <message>
        <source>Downloading voices… %1%</source>
        <translation>Pobieranie głosów… %1%</translation>
    </message>
    <message>
        <source>%1 (add API key)</source>
        <translation>%1 (dodaj klucz API)</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>Syntezator: %1</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Wczytywanie…</translation>
    </message>
    <message>
        <source>Voice: %1</source>
        <translation>Głos: %1</translation>
    </message>
    <message>
        <source>Speed: %1</source>
        <translation>Szybkość: %1</translation>
    </message>
    <message>
        <source>Set API Key</source>
        <translation>Ustaw klucz API</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Uruchamiaj przy logowaniu</translation>
    </message>
    <message>
        <source>Open Engine Log</source>
        <translation>Otwórz dziennik syntezatora</translation>
    </message>
    <message>
        <source>Quit Tavin</source>
        <translation>Zakończ Tavin</translation>
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
        <translation>Wstrzymaj lub wznów</translation>
    </message>
    <message>
        <source>Speak Selection or Stop</source>
        <translation>Odczytaj zaznaczenie lub zatrzymaj</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>Nothing to read</source>
        <translation>Nie ma czego odczytać</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Reading or paused</source>
        <translation>Odczytywanie trwa lub jest wstrzymane</translation>
    </message>
    <message>
        <source>Not reading</source>
        <translation>Nic nie jest odczytywane</translation>
    </message>
</context>
</TS>
