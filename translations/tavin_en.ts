<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>Alert</name>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <translation>Tavin reads the selected text of other programs through the desktop&apos;s accessibility interface, which is switched off. Quit Tavin and start it again: it switches the interface on. Or turn on assistive technologies in the desktop&apos;s settings. Programs that are already running may have to be started again too.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>GNOME</comment>
        <translation>Tavin reads the selected text of other programs through the desktop&apos;s accessibility interface, which is switched off. Quit Tavin and start it again: it switches the interface on. Turning on the screen reader in Settings &gt; Accessibility does so too. Programs that are already running may have to be started again.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>Plasma</comment>
        <translation>Tavin reads the selected text of other programs through the desktop&apos;s accessibility interface, which is switched off. Quit Tavin and start it again: it switches the interface on. Turning on the screen reader in System Settings &gt; Accessibility does so too. Programs that are already running may have to be started again.</translation>
    </message>
    <message>
        <source>Tavin couldn&apos;t read that</source>
        <translation>Tavin couldn&apos;t read that</translation>
    </message>
    <message>
        <source>Tavin needs Accessibility access</source>
        <translation>Tavin needs the accessibility interface</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Open Settings</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Tavin is downloading its voices (%1%). This happens once.</source>
        <translation>Tavin is downloading its voices (%1%). This happens once.</translation>
    </message>
    <message>
        <source>Voice setup failed: %1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Tavin is still loading its voices. Try again in a few seconds.</source>
        <translation>Tavin is still loading its voices. Try again in a few seconds.</translation>
    </message>
    <message>
        <source>%1 API key</source>
        <translation>%1 API key</translation>
    </message>
    <message>
        <source>Stored in your macOS Keychain. Leave empty to remove the key.</source>
        <translation>Stored in your desktop&apos;s keyring. Leave empty to remove the key.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Launch at Login failed: %1</source>
        <translation>Start at Login could not be changed: %1</translation>
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
        <translation>%1 needs a key: choose “Set API Key” in Tavin&apos;s menu.</translation>
    </message>
    <message>
        <source>%1 does not accept the key (HTTP %2).</source>
        <translation>%1 does not accept the key (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 wants to be paid: the account has no credit left (HTTP %2).</source>
        <translation>The %1 account has no credit left (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 says that the account&apos;s quota is used up (HTTP %2).</source>
        <translation>%1 says that the account&apos;s quota is used up (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is too slow or does not answer.</source>
        <translation>%1 is too slow or does not answer.</translation>
    </message>
    <message>
        <source>%1 cannot be found; this computer may be offline.</source>
        <translation>%1 cannot be found; this computer may be offline.</translation>
    </message>
    <message>
        <source>%1 cannot read this text.</source>
        <translation>%1 cannot read this text.</translation>
    </message>
    <message>
        <source>No voice on this computer speaks %1.</source>
        <translation>No voice on this computer speaks %1.</translation>
    </message>
    <message>
        <source>%1 is still downloading its voices (%2%).</source>
        <translation>%1 is still downloading its voices (%2%).</translation>
    </message>
    <message>
        <source>%1 is still loading its voices.</source>
        <translation>%1 is still loading its voices.</translation>
    </message>
    <message>
        <source>The key for %1 cannot be read: %2</source>
        <translation>The key for %1 cannot be read: %2</translation>
    </message>
    <message>
        <source>The key for %1 is kept only until Tavin ends: %2</source>
        <translation>The key for %1 is kept only until Tavin ends: %2</translation>
    </message>
    <message>
        <source>The key for %1 could not be removed: %2</source>
        <translation>The key for %1 could not be removed: %2</translation>
    </message>
    <message>
        <source>The keyring was not unlocked.</source>
        <translation>The keyring was not unlocked.</translation>
    </message>
    <message>
        <source>The keyring does not answer.</source>
        <translation>The keyring does not answer.</translation>
    </message>
    <message>
        <source>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</source>
        <translation>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</translation>
    </message>
    <message>
        <source>The sound server does not answer.</source>
        <translation>The sound server does not answer.</translation>
    </message>
    <message>
        <source>The sound output could not be started.</source>
        <translation>The sound output could not be started.</translation>
    </message>
    <message>
        <source>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</source>
        <translation>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</translation>
    </message>
    <message>
        <source>The disk is full: make room in %1, then choose %2 again.</source>
        <translation>The disk is full: make room in %1, then choose %2 again.</translation>
    </message>
    <message>
        <source>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</source>
        <translation>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2. See to it, then choose %3 again.</source>
        <translation>%1 cannot be written to: %2. Fix that, then choose %3 again.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</source>
        <translation>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</translation>
    </message>
    <message>
        <source>No download from %1: %2. Check the network, then choose %3 again.</source>
        <translation>Nothing could be downloaded from %1: %2. Check the network, then choose %3 again.</translation>
    </message>
    <message>
        <source>Getting the voices takes too long. Choose %1 again.</source>
        <translation>Downloading the voices takes too long. Choose %1 again.</translation>
    </message>
    <message>
        <source>%1 could not be set up. Choose it again.</source>
        <translation>%1 could not be set up. Choose it again.</translation>
    </message>
    <message>
        <source>%1 does not allow this with the key (HTTP %2).</source>
        <translation>%1 does not allow this with your key (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 does not know this voice or model (HTTP %2).</source>
        <translation>%1 does not know this voice or model (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is asked too often or the account&apos;s quota is used up; try again later (HTTP %2).</source>
        <translation>%1 is getting too many requests, or the account&apos;s quota is used up (HTTP %2). Try again later.</translation>
    </message>
    <message>
        <source>%1 has trouble of its own; try again later (HTTP %2).</source>
        <translation>%1 is having problems (HTTP %2). Try again later.</translation>
    </message>
    <message>
        <source>%1 did not accept the text (HTTP %2).</source>
        <translation>%1 did not accept the text (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 did not do as asked (HTTP %2).</source>
        <translation>%1 did not carry out the request (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 broke off the connection.</source>
        <translation>%1 closed the connection too early.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>%1 cannot be reached: %2.</translation>
    </message>
    <message>
        <source>the proxy does not allow it</source>
        <translation>the proxy does not allow it</translation>
    </message>
    <message>
        <source>%1 cannot be trusted: its certificate is not valid.</source>
        <translation>%1 cannot be trusted: its certificate is not valid.</translation>
    </message>
    <message>
        <source>This choice is kept only until Tavin ends: %1.</source>
        <translation>This choice is kept only until Tavin quits: %1.</translation>
    </message>
    <message>
        <source>The engine could not read this text.</source>
        <translation>The engine could not read this text.</translation>
    </message>
    <message>
        <source>The keyring is locked.</source>
        <translation>The keyring is locked.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</source>
        <translation>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</translation>
    </message>
    <message>
        <source>eSpeak NG is not installed (package libespeak-ng1).</source>
        <translation>eSpeak NG is not installed (package libespeak-ng1).</translation>
    </message>
    <message>
        <source>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</source>
        <translation>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</translation>
    </message>
    <message>
        <source>Getting the voices stopped unexpectedly (%1). Choose %2 again.</source>
        <translation>Downloading the voices stopped unexpectedly (%1). Choose %2 again.</translation>
    </message>
    <message>
        <source>it ended too early</source>
        <translation>the transfer ended too early</translation>
    </message>
    <message>
        <source>it went on at another place</source>
        <translation>the transfer went on at another place</translation>
    </message>
    <message>
        <source>something else was sent</source>
        <translation>something else was sent</translation>
    </message>
    <message>
        <source>it is too slow</source>
        <translation>the transfer is too slow</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>no answer</translation>
    </message>
    <message>
        <source>answer %1</source>
        <translation>answer %1</translation>
    </message>
    <message>
        <source>No sound output is connected.</source>
        <translation>No sound output is connected.</translation>
    </message>
    <message>
        <source>The sound output was disconnected.</source>
        <translation>The sound output was disconnected.</translation>
    </message>
    <message>
        <source>The sound output could not be started (%1).</source>
        <translation>The sound output could not be started (%1).</translation>
    </message>
    <message>
        <source>The sound output stopped unexpectedly (%1).</source>
        <translation>The sound output stopped unexpectedly (%1).</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>%1 could not be started.</translation>
    </message>
    <message>
        <source>%1 could not be started (%2).</source>
        <translation>%1 could not be started (%2).</translation>
    </message>
    <message>
        <source>%1 stopped unexpectedly (%2) and was started again.</source>
        <translation>%1 stopped unexpectedly (%2) and was started again.</translation>
    </message>
    <message>
        <source>%1 sent an answer that makes no sense.</source>
        <translation>%1 sent an answer that makes no sense.</translation>
    </message>
    <message>
        <source>%1 sent something other than sound.</source>
        <translation>%1 sent something other than sound.</translation>
    </message>
    <message>
        <source>%1 sent more sound than the text can have.</source>
        <translation>%1 sent more sound than the text can have.</translation>
    </message>
    <message>
        <source>%1 offers no voice to this account.</source>
        <translation>%1 offers no voice to this account.</translation>
    </message>
    <message>
        <source>%1 sent other files than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 sent other files than expected. Choose %2 again, or update Tavin.</translation>
    </message>
    <message>
        <source>%1 offers another file than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 offers another file than expected. Choose %2 again, or update Tavin.</translation>
    </message>
    <message>
        <source>Choose this voice of Piper again: it cannot be loaded (%1).</source>
        <translation>Choose this voice of Piper again: it cannot be loaded (%1).</translation>
    </message>
    <message>
        <source>Choose Kokoro again: its files cannot be loaded (%1).</source>
        <translation>Choose Kokoro again: its files cannot be loaded (%1).</translation>
    </message>
    <message>
        <source>Package python3-secretstorage is not installed.</source>
        <translation>Package python3-secretstorage is not installed.</translation>
    </message>
    <message>
        <source>Without a session bus, the keyring cannot be reached.</source>
        <translation>Without a session bus, the keyring cannot be reached.</translation>
    </message>
    <message>
        <source>The keyring could not be asked.</source>
        <translation>The keyring could not be asked.</translation>
    </message>
    <message>
        <source>What is stored there is not a key.</source>
        <translation>What is stored there is not a key.</translation>
    </message>
    <message>
        <source>eSpeak NG&apos;s data is missing (package espeak-ng-data).</source>
        <translation>eSpeak NG&apos;s data is missing (package espeak-ng-data).</translation>
    </message>
</context>
<context>
    <name>Login</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>The folder %1 could not be created.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 could not be written: %2</translation>
    </message>
    <message>
        <source>%1 could not be removed: %2</source>
        <translation>%1 could not be removed: %2</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Hear a second, robotic voice too?</source>
        <translation>⌥ is Alt, ⌃ is Control, ⇧ is Shift.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <translation>Some desktops use Alt+Escape themselves.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <translation>If yours does, pick ⌃ Esc or ⌃⌥ R, or change it</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <translation>in the desktop&apos;s keyboard settings.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>GNOME</comment>
        <translation>GNOME switches windows with Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>GNOME</comment>
        <translation>Pick ⌃ Esc, or change GNOME&apos;s shortcut in</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>GNOME</comment>
        <translation>Settings &gt; Keyboard.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Plasma</comment>
        <translation>Plasma itself does nothing with Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Plasma</comment>
        <translation>If another program has it, change that in</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Plasma</comment>
        <translation>System Settings &gt; Shortcuts.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Xfce</comment>
        <translation>Xfce itself does nothing with Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Xfce</comment>
        <translation>If another program has it, change that in</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Xfce</comment>
        <translation>Settings &gt; Keyboard.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>no shortcuts</comment>
        <translation>Programs get no shortcuts on this desktop.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>no shortcuts</comment>
        <translation>Bind a key to Tavin in its own settings:</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>no shortcuts</comment>
        <translation>see “man tavin”.</translation>
    </message>
    <message>
        <source>Voice engine starting…</source>
        <translation>Voice engine starting…</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Speak Selection</source>
        <translation>Speak Selection</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Resume</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <translation>⚠︎ %1 is taken by the desktop or another program</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <comment>no shortcuts</comment>
        <translation>⚠︎ %1 cannot work on this desktop</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Shortcut: %1</translation>
    </message>
    <message>
        <source>Loading voices…</source>
        <translation>Loading voices…</translation>
    </message>
    <message>
        <source>⚠︎ Voice setup failed: %1</source>
        <translation>⚠︎ Voice setup failed: %1</translation>
    </message>
    <message>
        <source>Downloading voices… %1%</source>
        <translation>Downloading voices… %1%</translation>
    </message>
    <message>
        <source>%1 (add API key)</source>
        <translation>%1 (add API key)</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>Engine: %1</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Loading…</translation>
    </message>
    <message>
        <source>Voice: %1</source>
        <translation>Voice: %1</translation>
    </message>
    <message>
        <source>Speed: %1</source>
        <translation>Speed: %1</translation>
    </message>
    <message>
        <source>Set API Key</source>
        <translation>Set API Key</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Start at Login</translation>
    </message>
    <message>
        <source>Open Engine Log</source>
        <translation>Open Engine Log</translation>
    </message>
    <message>
        <source>Quit Tavin</source>
        <translation>Quit Tavin</translation>
    </message>
    <message>
        <source>.</source>
        <comment>decimal point of a speed</comment>
        <translation>.</translation>
    </message>
</context>
<context>
    <name>Shortcut</name>
    <message>
        <source>Pause or Resume</source>
        <translation>Pause or Resume</translation>
    </message>
    <message>
        <source>Speak Selection or Stop</source>
        <translation>Speak Selection or Stop</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>Nothing to read</source>
        <translation>Nothing to read</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Reading or paused</source>
        <translation>Reading or paused</translation>
    </message>
    <message>
        <source>Not reading</source>
        <translation>Not reading</translation>
    </message>
</context>
</TS>
