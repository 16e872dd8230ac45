<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>Alert</name>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <translation>Tavin lit le texte sélectionné dans les autres programmes au moyen de l’interface d’accessibilité, qui est désactivée. Quittez Tavin et relancez-le&#xa0;: il active l’interface. Ou activez les technologies d’assistance dans les paramètres du bureau. Il faut peut-être relancer aussi les programmes déjà ouverts.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>GNOME</comment>
        <translation>Tavin lit le texte sélectionné dans les autres programmes au moyen de l’interface d’accessibilité, qui est désactivée. Quittez Tavin et relancez-le&#xa0;: il active l’interface. Activer le lecteur d’écran dans Paramètres &gt; Accessibilité l’active aussi. Il faut peut-être relancer les programmes déjà ouverts.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>Plasma</comment>
        <translation>Tavin lit le texte sélectionné dans les autres programmes au moyen de l’interface d’accessibilité, qui est désactivée. Quittez Tavin et relancez-le&#xa0;: il active l’interface. Activer le lecteur d’écran dans Configuration du système &gt; Accessibilité l’active aussi. Il faut peut-être relancer les programmes déjà ouverts.</translation>
    </message>
    <message>
        <source>Tavin couldn&apos;t read that</source>
        <translation>Tavin n’a pas pu lire cela</translation>
    </message>
    <message>
        <source>Tavin needs Accessibility access</source>
        <translation>Tavin a besoin de l’interface d’accessibilité</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Ouvrir les paramètres</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Tavin is downloading its voices (%1%). This happens once.</source>
        <translation>Tavin télécharge ses voix (%1&#xa0;%). Ce téléchargement n’a lieu qu’une fois.</translation>
    </message>
    <message>
        <source>Voice setup failed: %1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Tavin is still loading its voices. Try again in a few seconds.</source>
        <translation>Tavin charge encore ses voix. Réessayez dans quelques secondes.</translation>
    </message>
    <message>
        <source>%1 API key</source>
        <translation>Clé d’API %1</translation>
    </message>
    <message>
        <source>Stored in your macOS Keychain. Leave empty to remove the key.</source>
        <translation>Enregistrée dans votre trousseau de clés. Laissez vide pour la supprimer.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Launch at Login failed: %1</source>
        <translation>Impossible de modifier le lancement à l’ouverture de session&#xa0;: %1</translation>
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
        <translation>%1 a besoin d’une clé&#xa0;: choisissez «&#xa0;Définir la clé d’API&#xa0;» dans le menu de Tavin.</translation>
    </message>
    <message>
        <source>%1 does not accept the key (HTTP %2).</source>
        <translation>%1 n’accepte pas la clé (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 wants to be paid: the account has no credit left (HTTP %2).</source>
        <translation>Le compte %1 n’a plus de crédit (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 says that the account&apos;s quota is used up (HTTP %2).</source>
        <translation>%1 signale que le quota du compte est épuisé (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is too slow or does not answer.</source>
        <translation>%1 est trop lent ou ne répond pas.</translation>
    </message>
    <message>
        <source>%1 cannot be found; this computer may be offline.</source>
        <translation>%1 est introuvable. Cet ordinateur est-il connecté&#xa0;?</translation>
    </message>
    <message>
        <source>%1 cannot read this text.</source>
        <translation>%1 ne peut pas lire ce texte.</translation>
    </message>
    <message>
        <source>No voice on this computer speaks %1.</source>
        <translation>Aucune voix de cet ordinateur ne parle la langue «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>%1 is still downloading its voices (%2%).</source>
        <translation>%1 télécharge encore ses voix (%2&#xa0;%).</translation>
    </message>
    <message>
        <source>%1 is still loading its voices.</source>
        <translation>%1 charge encore ses voix.</translation>
    </message>
    <message>
        <source>The key for %1 cannot be read: %2</source>
        <translation>La clé de %1 ne peut pas être lue&#xa0;: %2</translation>
    </message>
    <message>
        <source>The key for %1 is kept only until Tavin ends: %2</source>
        <translation>La clé de %1 n’est gardée que jusqu’à l’arrêt de Tavin&#xa0;: %2</translation>
    </message>
    <message>
        <source>The key for %1 could not be removed: %2</source>
        <translation>La clé de %1 n’a pas pu être supprimée&#xa0;: %2</translation>
    </message>
    <message>
        <source>The keyring was not unlocked.</source>
        <translation>Le trousseau n’a pas été déverrouillé.</translation>
    </message>
    <message>
        <source>The keyring does not answer.</source>
        <translation>Le trousseau ne répond pas.</translation>
    </message>
    <message>
        <source>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</source>
        <translation>Ce bureau n’a pas de trousseau tel que GNOME Keyring ou KWallet.</translation>
    </message>
    <message>
        <source>The sound server does not answer.</source>
        <translation>Le serveur de son ne répond pas.</translation>
    </message>
    <message>
        <source>The sound output could not be started.</source>
        <translation>La sortie audio n’a pas pu démarrer.</translation>
    </message>
    <message>
        <source>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</source>
        <translation>Il manque pip pour Python&#xa0;: installez le paquet python3-venv, puis choisissez de nouveau %1.</translation>
    </message>
    <message>
        <source>The disk is full: make room in %1, then choose %2 again.</source>
        <translation>Le disque est plein&#xa0;: libérez de la place dans %1, puis choisissez de nouveau %2.</translation>
    </message>
    <message>
        <source>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</source>
        <translation>%1 a besoin de %2 Mo dans %3, et %4 Mo sont libres. Libérez de la place, puis choisissez de nouveau %5.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2. See to it, then choose %3 again.</source>
        <translation>Impossible d’écrire dans %1&#xa0;: %2. Remédiez-y, puis choisissez de nouveau %3.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</source>
        <translation>Les bibliothèques de %1 n’ont pas pu être téléchargées. Vérifiez le réseau, puis choisissez de nouveau %2.</translation>
    </message>
    <message>
        <source>No download from %1: %2. Check the network, then choose %3 again.</source>
        <translation>Téléchargement impossible depuis %1&#xa0;: %2. Vérifiez le réseau, puis choisissez de nouveau %3.</translation>
    </message>
    <message>
        <source>Getting the voices takes too long. Choose %1 again.</source>
        <translation>Le téléchargement des voix est trop long. Choisissez de nouveau %1.</translation>
    </message>
    <message>
        <source>%1 could not be set up. Choose it again.</source>
        <translation>%1 n’a pas pu être installé. Choisissez-le de nouveau.</translation>
    </message>
    <message>
        <source>%1 does not allow this with the key (HTTP %2).</source>
        <translation>%1 ne permet pas cela avec cette clé (HTTP&#xa0;%2).</translation>
    </message>
    <message>
        <source>%1 does not know this voice or model (HTTP %2).</source>
        <translation>%1 ne connaît pas cette voix ou ce modèle (HTTP&#xa0;%2).</translation>
    </message>
    <message>
        <source>%1 is asked too often or the account&apos;s quota is used up; try again later (HTTP %2).</source>
        <translation>%1 reçoit trop de demandes, ou le quota du compte est épuisé (HTTP&#xa0;%2). Réessayez plus tard.</translation>
    </message>
    <message>
        <source>%1 has trouble of its own; try again later (HTTP %2).</source>
        <translation>%1 rencontre un problème (HTTP&#xa0;%2). Réessayez plus tard.</translation>
    </message>
    <message>
        <source>%1 did not accept the text (HTTP %2).</source>
        <translation>%1 n’a pas accepté le texte (HTTP&#xa0;%2).</translation>
    </message>
    <message>
        <source>%1 did not do as asked (HTTP %2).</source>
        <translation>%1 n’a pas traité la demande (HTTP&#xa0;%2).</translation>
    </message>
    <message>
        <source>%1 broke off the connection.</source>
        <translation>%1 a interrompu la connexion.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>%1 est injoignable&#xa0;:&#xa0;%2.</translation>
    </message>
    <message>
        <source>the proxy does not allow it</source>
        <translation>le serveur mandataire ne le permet pas</translation>
    </message>
    <message>
        <source>%1 cannot be trusted: its certificate is not valid.</source>
        <translation>%1 n’est pas digne de confiance&#xa0;: son certificat n’est pas valide.</translation>
    </message>
    <message>
        <source>This choice is kept only until Tavin ends: %1.</source>
        <translation>Ce choix n’est gardé que jusqu’à l’arrêt de Tavin&#xa0;:&#xa0;%1.</translation>
    </message>
    <message>
        <source>The engine could not read this text.</source>
        <translation>Le moteur n’a pas pu lire ce texte.</translation>
    </message>
    <message>
        <source>The keyring is locked.</source>
        <translation>Le trousseau est verrouillé.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</source>
        <translation>Les bibliothèques de&#xa0;%1 ne peuvent pas être chargées (%2). Choisissez de nouveau&#xa0;%3.</translation>
    </message>
    <message>
        <source>eSpeak NG is not installed (package libespeak-ng1).</source>
        <translation>eSpeak NG n’est pas installé (paquet libespeak-ng1).</translation>
    </message>
    <message>
        <source>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</source>
        <translation>%1 refuse le téléchargement (réponse&#xa0;%2). Choisissez de nouveau&#xa0;%3 plus tard, ou mettez Tavin à jour.</translation>
    </message>
    <message>
        <source>Getting the voices stopped unexpectedly (%1). Choose %2 again.</source>
        <translation>Le téléchargement des voix s’est arrêté de façon inattendue (%1). Choisissez de nouveau&#xa0;%2.</translation>
    </message>
    <message>
        <source>it ended too early</source>
        <translation>le transfert s’est terminé trop tôt</translation>
    </message>
    <message>
        <source>it went on at another place</source>
        <translation>le transfert a repris à un autre endroit</translation>
    </message>
    <message>
        <source>something else was sent</source>
        <translation>autre chose a été envoyé</translation>
    </message>
    <message>
        <source>it is too slow</source>
        <translation>le transfert est trop lent</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>pas de réponse</translation>
    </message>
    <message>
        <source>answer %1</source>
        <translation>réponse&#xa0;%1</translation>
    </message>
    <message>
        <source>No sound output is connected.</source>
        <translation>Aucune sortie audio n’est connectée.</translation>
    </message>
    <message>
        <source>The sound output was disconnected.</source>
        <translation>La sortie audio a été déconnectée.</translation>
    </message>
    <message>
        <source>The sound output could not be started (%1).</source>
        <translation>La sortie audio n’a pas pu être démarrée (%1).</translation>
    </message>
    <message>
        <source>The sound output stopped unexpectedly (%1).</source>
        <translation>La sortie audio s’est arrêtée de façon inattendue (%1).</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>%1 n’a pas pu être démarré.</translation>
    </message>
    <message>
        <source>%1 could not be started (%2).</source>
        <translation>%1 n’a pas pu être démarré (%2).</translation>
    </message>
    <message>
        <source>%1 stopped unexpectedly (%2) and was started again.</source>
        <translation>%1 s’est arrêté de façon inattendue (%2) et a été redémarré.</translation>
    </message>
    <message>
        <source>%1 sent an answer that makes no sense.</source>
        <translation>%1 a envoyé une réponse qui n’a pas de sens.</translation>
    </message>
    <message>
        <source>%1 sent something other than sound.</source>
        <translation>%1 a envoyé autre chose que du son.</translation>
    </message>
    <message>
        <source>%1 sent more sound than the text can have.</source>
        <translation>%1 a envoyé plus de son que le texte ne peut en avoir.</translation>
    </message>
    <message>
        <source>%1 offers no voice to this account.</source>
        <translation>%1 n’offre aucune voix à ce compte.</translation>
    </message>
    <message>
        <source>%1 sent other files than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 a envoyé d’autres fichiers que prévu. Choisissez à nouveau %2 ou mettez Tavin à jour.</translation>
    </message>
    <message>
        <source>%1 offers another file than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 propose un autre fichier que prévu. Choisissez à nouveau %2 ou mettez Tavin à jour.</translation>
    </message>
    <message>
        <source>Choose this voice of Piper again: it cannot be loaded (%1).</source>
        <translation>Choisissez à nouveau cette voix de Piper : elle ne peut pas être chargée (%1).</translation>
    </message>
    <message>
        <source>Choose Kokoro again: its files cannot be loaded (%1).</source>
        <translation>Choisissez à nouveau Kokoro : ses fichiers ne peuvent pas être chargés (%1).</translation>
    </message>
    <message>
        <source>Package python3-secretstorage is not installed.</source>
        <translation>Le paquet python3-secretstorage n’est pas installé.</translation>
    </message>
    <message>
        <source>Without a session bus, the keyring cannot be reached.</source>
        <translation>Le trousseau ne peut pas être joint : il n’y a pas de bus de session.</translation>
    </message>
    <message>
        <source>The keyring could not be asked.</source>
        <translation>Le trousseau n’a pas pu être interrogé.</translation>
    </message>
    <message>
        <source>What is stored there is not a key.</source>
        <translation>Ce qui y est enregistré n’est pas une clé.</translation>
    </message>
    <message>
        <source>eSpeak NG&apos;s data is missing (package espeak-ng-data).</source>
        <translation>Les données d’eSpeak NG manquent (paquet espeak-ng-data).</translation>
    </message>
</context>
<context>
    <name>Login</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>Le dossier %1 n’a pas pu être créé.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 n’a pas pu être écrit&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1 could not be removed: %2</source>
        <translation>%1 n’a pas pu être supprimé&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Hear a second, robotic voice too?</source>
        <translation>⌥ est Alt, ⌃ est Ctrl, ⇧ est Maj.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <translation>Certains bureaux utilisent Alt+Échap.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <translation>Si le vôtre le fait, choisissez ⌃ Esc ou ⌃⌥ R, ou modifiez cela</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <translation>dans les paramètres du clavier.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>GNOME</comment>
        <translation>GNOME change de fenêtre avec Alt+Échap.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>GNOME</comment>
        <translation>Choisissez ⌃ Esc, ou changez ce raccourci dans</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>GNOME</comment>
        <translation>Paramètres &gt; Clavier.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Plasma</comment>
        <translation>Plasma lui-même n’utilise pas Alt+Échap.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Plasma</comment>
        <translation>Si un autre programme l’a pris, changez-le dans</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Plasma</comment>
        <translation>Configuration du système &gt; Raccourcis.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Xfce</comment>
        <translation>Xfce lui-même n’utilise pas Alt+Échap.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Xfce</comment>
        <translation>Si un autre programme l’a pris, changez-le dans</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Xfce</comment>
        <translation>Paramètres &gt; Clavier.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>no shortcuts</comment>
        <translation>Ce bureau n’offre pas de raccourcis aux programmes.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>no shortcuts</comment>
        <translation>Créez-y un raccourci qui appelle Tavin&#xa0;:</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>no shortcuts</comment>
        <translation>voir «&#xa0;man tavin&#xa0;».</translation>
    </message>
    <message>
        <source>Voice engine starting…</source>
        <translation>Démarrage du moteur vocal…</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Speak Selection</source>
        <translation>Lire la sélection</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <translation>⚠︎ %1 est utilisé par le bureau ou un autre programme</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <comment>no shortcuts</comment>
        <translation>⚠︎ %1 sans effet&#xa0;: ce bureau n’offre pas de raccourcis</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Raccourci&#xa0;: %1</translation>
    </message>
    <message>
        <source>Loading voices…</source>
        <translation>Chargement des voix…</translation>
    </message>
    <message>
        <source>⚠︎ Voice setup failed: %1</source>
        <translation>⚠︎ Échec de l’installation de la voix&#xa0;: %1</translation>
    </message>
    <message>
        <source>Downloading voices… %1%</source>
        <translation>Téléchargement des voix… %1&#xa0;%</translation>
    </message>
    <message>
        <source>%1 (add API key)</source>
        <translation>%1 (ajouter une clé d’API)</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>Moteur&#xa0;: %1</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Chargement…</translation>
    </message>
    <message>
        <source>Voice: %1</source>
        <translation>Voix&#xa0;: %1</translation>
    </message>
    <message>
        <source>Speed: %1</source>
        <translation>Vitesse&#xa0;: %1</translation>
    </message>
    <message>
        <source>Set API Key</source>
        <translation>Définir la clé d’API</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Lancer à l’ouverture de session</translation>
    </message>
    <message>
        <source>Open Engine Log</source>
        <translation>Ouvrir le journal du moteur</translation>
    </message>
    <message>
        <source>Quit Tavin</source>
        <translation>Quitter Tavin</translation>
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
        <translation>Pause ou reprise</translation>
    </message>
    <message>
        <source>Speak Selection or Stop</source>
        <translation>Lire la sélection ou arrêter</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>Nothing to read</source>
        <translation>Rien à lire</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Reading or paused</source>
        <translation>Lecture en cours ou en pause</translation>
    </message>
    <message>
        <source>Not reading</source>
        <translation>Aucune lecture en cours</translation>
    </message>
</context>
</TS>
