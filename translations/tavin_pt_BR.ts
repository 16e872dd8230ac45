<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR">
<context>
    <name>Alert</name>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <translation>O Tavin lê o texto selecionado em outros programas através da interface de acessibilidade, que está desativada. Saia do Tavin e abra-o de novo: ele ativa a interface. Ou ative as tecnologias de acessibilidade nas configurações do ambiente. Talvez também seja preciso reiniciar os programas já abertos.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>GNOME</comment>
        <translation>O Tavin lê o texto selecionado em outros programas através da interface de acessibilidade, que está desativada. Saia do Tavin e abra-o de novo: ele ativa a interface. Ativar o leitor de tela em Configurações &gt; Acessibilidade também a ativa. Pode ser preciso reiniciar os programas já abertos.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>Plasma</comment>
        <translation>O Tavin lê o texto selecionado em outros programas através da interface de acessibilidade, que está desativada. Saia do Tavin e abra-o de novo: ele ativa a interface. Ativar o leitor de tela em Configurações do Sistema &gt; Acessibilidade também a ativa. Pode ser preciso reiniciar os programas já abertos.</translation>
    </message>
    <message>
        <source>Tavin couldn&apos;t read that</source>
        <translation>O Tavin não conseguiu ler isto</translation>
    </message>
    <message>
        <source>Tavin needs Accessibility access</source>
        <translation>O Tavin precisa da interface de acessibilidade</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Abrir as configurações</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Tavin is downloading its voices (%1%). This happens once.</source>
        <translation>O Tavin está baixando as vozes (%1%). Só acontece uma vez.</translation>
    </message>
    <message>
        <source>Voice setup failed: %1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Tavin is still loading its voices. Try again in a few seconds.</source>
        <translation>O Tavin ainda está carregando as vozes. Tente de novo em alguns segundos.</translation>
    </message>
    <message>
        <source>%1 API key</source>
        <translation>Chave de API do %1</translation>
    </message>
    <message>
        <source>Stored in your macOS Keychain. Leave empty to remove the key.</source>
        <translation>Ela é guardada no seu chaveiro. Deixe vazio para remover a chave.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Salvar</translation>
    </message>
    <message>
        <source>Launch at Login failed: %1</source>
        <translation>Não foi possível alterar a inicialização com a sessão: %1</translation>
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
        <translation>O %1 precisa de uma chave: escolha “Definir chave de API” no menu do Tavin.</translation>
    </message>
    <message>
        <source>%1 does not accept the key (HTTP %2).</source>
        <translation>O %1 não aceita a chave (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 wants to be paid: the account has no credit left (HTTP %2).</source>
        <translation>A conta de %1 não tem mais crédito (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 says that the account&apos;s quota is used up (HTTP %2).</source>
        <translation>O %1 indica que a cota da conta se esgotou (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is too slow or does not answer.</source>
        <translation>O %1 é lento demais ou não responde.</translation>
    </message>
    <message>
        <source>%1 cannot be found; this computer may be offline.</source>
        <translation>Não foi possível encontrar o %1. Este computador está conectado à rede?</translation>
    </message>
    <message>
        <source>%1 cannot read this text.</source>
        <translation>O %1 não consegue ler este texto.</translation>
    </message>
    <message>
        <source>No voice on this computer speaks %1.</source>
        <translation>Nenhuma voz deste computador fala o idioma “%1”.</translation>
    </message>
    <message>
        <source>%1 is still downloading its voices (%2%).</source>
        <translation>O %1 ainda está baixando as vozes (%2%).</translation>
    </message>
    <message>
        <source>%1 is still loading its voices.</source>
        <translation>O %1 ainda está carregando as vozes.</translation>
    </message>
    <message>
        <source>The key for %1 cannot be read: %2</source>
        <translation>Não é possível ler a chave do %1: %2</translation>
    </message>
    <message>
        <source>The key for %1 is kept only until Tavin ends: %2</source>
        <translation>A chave do %1 só é mantida até o Tavin terminar: %2</translation>
    </message>
    <message>
        <source>The key for %1 could not be removed: %2</source>
        <translation>Não foi possível remover a chave do %1: %2</translation>
    </message>
    <message>
        <source>The keyring was not unlocked.</source>
        <translation>O chaveiro não foi desbloqueado.</translation>
    </message>
    <message>
        <source>The keyring does not answer.</source>
        <translation>O chaveiro não responde.</translation>
    </message>
    <message>
        <source>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</source>
        <translation>Este ambiente não tem um chaveiro como o GNOME Keyring ou o KWallet.</translation>
    </message>
    <message>
        <source>The sound server does not answer.</source>
        <translation>O servidor de som não responde.</translation>
    </message>
    <message>
        <source>The sound output could not be started.</source>
        <translation>Não foi possível iniciar a saída de som.</translation>
    </message>
    <message>
        <source>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</source>
        <translation>Falta o pip do Python: instale o pacote python3-venv e escolha de novo o %1.</translation>
    </message>
    <message>
        <source>The disk is full: make room in %1, then choose %2 again.</source>
        <translation>O disco está cheio: libere espaço em %1 e escolha de novo o %2.</translation>
    </message>
    <message>
        <source>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</source>
        <translation>O %1 precisa de %2 MB em %3, e há %4 MB livres. Libere espaço e escolha de novo o %5.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2. See to it, then choose %3 again.</source>
        <translation>Não é possível gravar em %1: %2. Corrija isso e escolha de novo o %3.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</source>
        <translation>Não foi possível baixar as bibliotecas do %1. Verifique a rede e escolha de novo o %2.</translation>
    </message>
    <message>
        <source>No download from %1: %2. Check the network, then choose %3 again.</source>
        <translation>Não foi possível baixar de %1: %2. Verifique a rede e escolha de novo o %3.</translation>
    </message>
    <message>
        <source>Getting the voices takes too long. Choose %1 again.</source>
        <translation>O download das vozes demora demais. Escolha de novo o %1.</translation>
    </message>
    <message>
        <source>%1 could not be set up. Choose it again.</source>
        <translation>Não foi possível preparar o %1. Escolha-o de novo.</translation>
    </message>
    <message>
        <source>%1 does not allow this with the key (HTTP %2).</source>
        <translation>O %1 não permite isso com esta chave (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 does not know this voice or model (HTTP %2).</source>
        <translation>O %1 não conhece esta voz ou este modelo (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is asked too often or the account&apos;s quota is used up; try again later (HTTP %2).</source>
        <translation>O %1 recebe pedidos demais ou a cota da conta se esgotou (HTTP %2). Tente de novo mais tarde.</translation>
    </message>
    <message>
        <source>%1 has trouble of its own; try again later (HTTP %2).</source>
        <translation>O %1 está com problemas (HTTP %2). Tente de novo mais tarde.</translation>
    </message>
    <message>
        <source>%1 did not accept the text (HTTP %2).</source>
        <translation>O %1 não aceitou o texto (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 did not do as asked (HTTP %2).</source>
        <translation>O %1 não executou o pedido (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 broke off the connection.</source>
        <translation>O %1 interrompeu a conexão.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>Não é possível contatar o %1: %2.</translation>
    </message>
    <message>
        <source>the proxy does not allow it</source>
        <translation>o proxy não permite isso</translation>
    </message>
    <message>
        <source>%1 cannot be trusted: its certificate is not valid.</source>
        <translation>O %1 não é de confiança: o certificado não é válido.</translation>
    </message>
    <message>
        <source>This choice is kept only until Tavin ends: %1.</source>
        <translation>Esta escolha só é mantida até o Tavin terminar: %1.</translation>
    </message>
    <message>
        <source>The engine could not read this text.</source>
        <translation>O mecanismo não conseguiu ler este texto.</translation>
    </message>
    <message>
        <source>The keyring is locked.</source>
        <translation>O chaveiro está bloqueado.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</source>
        <translation>Não é possível carregar as bibliotecas do %1 (%2). Escolha de novo o %3.</translation>
    </message>
    <message>
        <source>eSpeak NG is not installed (package libespeak-ng1).</source>
        <translation>O eSpeak NG não está instalado (pacote libespeak-ng1).</translation>
    </message>
    <message>
        <source>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</source>
        <translation>%1 recusa o download (resposta %2). Escolha de novo o %3 mais tarde ou atualize o Tavin.</translation>
    </message>
    <message>
        <source>Getting the voices stopped unexpectedly (%1). Choose %2 again.</source>
        <translation>O download das vozes parou inesperadamente (%1). Escolha de novo o %2.</translation>
    </message>
    <message>
        <source>it ended too early</source>
        <translation>o download terminou cedo demais</translation>
    </message>
    <message>
        <source>it went on at another place</source>
        <translation>o download continuou em outro ponto</translation>
    </message>
    <message>
        <source>something else was sent</source>
        <translation>foi enviada outra coisa</translation>
    </message>
    <message>
        <source>it is too slow</source>
        <translation>o download está lento demais</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>sem resposta</translation>
    </message>
    <message>
        <source>answer %1</source>
        <translation>resposta %1</translation>
    </message>
    <message>
        <source>No sound output is connected.</source>
        <translation>Nenhuma saída de som está conectada.</translation>
    </message>
    <message>
        <source>The sound output was disconnected.</source>
        <translation>A saída de som foi desconectada.</translation>
    </message>
    <message>
        <source>The sound output could not be started (%1).</source>
        <translation>Não foi possível iniciar a saída de som (%1).</translation>
    </message>
    <message>
        <source>The sound output stopped unexpectedly (%1).</source>
        <translation>A saída de som parou inesperadamente (%1).</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>Não foi possível iniciar o %1.</translation>
    </message>
    <message>
        <source>%1 could not be started (%2).</source>
        <translation>Não foi possível iniciar o %1 (%2).</translation>
    </message>
    <message>
        <source>%1 stopped unexpectedly (%2) and was started again.</source>
        <translation>O %1 parou inesperadamente (%2) e foi reiniciado.</translation>
    </message>
    <message>
        <source>%1 sent an answer that makes no sense.</source>
        <translation>O %1 enviou uma resposta sem sentido.</translation>
    </message>
    <message>
        <source>%1 sent something other than sound.</source>
        <translation>O %1 enviou algo que não é som.</translation>
    </message>
    <message>
        <source>%1 sent more sound than the text can have.</source>
        <translation>O %1 enviou mais som do que o texto pode ter.</translation>
    </message>
    <message>
        <source>%1 offers no voice to this account.</source>
        <translation>O %1 não oferece nenhuma voz a esta conta.</translation>
    </message>
    <message>
        <source>%1 sent other files than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 enviou arquivos diferentes dos esperados. Escolha de novo o %2 ou atualize o Tavin.</translation>
    </message>
    <message>
        <source>%1 offers another file than expected. Choose %2 again, or update Tavin.</source>
        <translation>%1 oferece um arquivo diferente do esperado. Escolha de novo o %2 ou atualize o Tavin.</translation>
    </message>
    <message>
        <source>Choose this voice of Piper again: it cannot be loaded (%1).</source>
        <translation>Escolha de novo esta voz do Piper: não é possível carregá-la (%1).</translation>
    </message>
    <message>
        <source>Choose Kokoro again: its files cannot be loaded (%1).</source>
        <translation>Escolha de novo o Kokoro: não é possível carregar os arquivos dele (%1).</translation>
    </message>
    <message>
        <source>Package python3-secretstorage is not installed.</source>
        <translation>O pacote python3-secretstorage não está instalado.</translation>
    </message>
    <message>
        <source>Without a session bus, the keyring cannot be reached.</source>
        <translation>Não é possível acessar o chaveiro: não há um barramento de sessão.</translation>
    </message>
    <message>
        <source>The keyring could not be asked.</source>
        <translation>Não foi possível consultar o chaveiro.</translation>
    </message>
    <message>
        <source>What is stored there is not a key.</source>
        <translation>O que está salvo ali não é uma chave.</translation>
    </message>
    <message>
        <source>eSpeak NG&apos;s data is missing (package espeak-ng-data).</source>
        <translation>Faltam os dados do eSpeak NG (pacote espeak-ng-data).</translation>
    </message>
</context>
<context>
    <name>Login</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>Não foi possível criar a pasta %1.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>Não foi possível gravar %1: %2</translation>
    </message>
    <message>
        <source>%1 could not be removed: %2</source>
        <translation>Não foi possível remover %1: %2</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Hear a second, robotic voice too?</source>
        <translation>⌥ é Alt, ⌃ é Ctrl, ⇧ é Shift.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <translation>Alguns ambientes usam Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <translation>Se for o caso, escolha ⌃ Esc ou ⌃⌥ R, ou mude-o</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <translation>nas configurações do teclado.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>GNOME</comment>
        <translation>O GNOME muda de janela com Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>GNOME</comment>
        <translation>Escolha ⌃ Esc, ou altere o atalho do GNOME em</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>GNOME</comment>
        <translation>Configurações &gt; Teclado.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Plasma</comment>
        <translation>O Plasma não usa Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Plasma</comment>
        <translation>Se outro programa o usa, mude-o em</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Plasma</comment>
        <translation>Configurações do Sistema &gt; Atalhos.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Xfce</comment>
        <translation>O Xfce não usa Alt+Esc.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Xfce</comment>
        <translation>Se outro programa o usa, mude-o em</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Xfce</comment>
        <translation>Configurações &gt; Teclado.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>no shortcuts</comment>
        <translation>Este ambiente não oferece atalhos aos programas.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>no shortcuts</comment>
        <translation>Crie nele um atalho que chame o Tavin:</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>no shortcuts</comment>
        <translation>veja “man tavin”.</translation>
    </message>
    <message>
        <source>Voice engine starting…</source>
        <translation>Iniciando o mecanismo de voz…</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Parar</translation>
    </message>
    <message>
        <source>Speak Selection</source>
        <translation>Ler a seleção</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Retomar</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <translation>⚠︎ %1 está em uso pelo ambiente ou por outro programa</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <comment>no shortcuts</comment>
        <translation>⚠︎ %1 não funciona: este ambiente não oferece atalhos</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Atalho: %1</translation>
    </message>
    <message>
        <source>Loading voices…</source>
        <translation>Carregando as vozes…</translation>
    </message>
    <message>
        <source>⚠︎ Voice setup failed: %1</source>
        <translation>⚠︎ A preparação da voz falhou: %1</translation>
    </message>
    <message>
        <source>Downloading voices… %1%</source>
        <translation>Baixando as vozes… %1%</translation>
    </message>
    <message>
        <source>%1 (add API key)</source>
        <translation>%1 (adicionar chave de API)</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>Mecanismo: %1</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Carregando…</translation>
    </message>
    <message>
        <source>Voice: %1</source>
        <translation>Voz: %1</translation>
    </message>
    <message>
        <source>Speed: %1</source>
        <translation>Velocidade: %1</translation>
    </message>
    <message>
        <source>Set API Key</source>
        <translation>Definir chave de API</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Iniciar com a sessão</translation>
    </message>
    <message>
        <source>Open Engine Log</source>
        <translation>Abrir o registro do mecanismo</translation>
    </message>
    <message>
        <source>Quit Tavin</source>
        <translation>Sair do Tavin</translation>
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
        <translation>Pausar ou retomar</translation>
    </message>
    <message>
        <source>Speak Selection or Stop</source>
        <translation>Ler a seleção ou parar</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>Nothing to read</source>
        <translation>Nada para ler</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Reading or paused</source>
        <translation>Lendo ou em pausa</translation>
    </message>
    <message>
        <source>Not reading</source>
        <translation>Nenhuma leitura em andamento</translation>
    </message>
</context>
</TS>
