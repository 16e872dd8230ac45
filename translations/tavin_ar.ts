<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>Alert</name>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <translation>يقرأ Tavin النص المحدد في البرامج الأخرى عبر واجهة الإتاحة، وهي معطلة. أنهِ Tavin ثم شغّله من جديد: سيفعّل الواجهة بنفسه. أو فعّل التقنيات المساعدة من إعدادات سطح المكتب. وقد يلزم إعادة تشغيل البرامج المفتوحة أيضًا.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>GNOME</comment>
        <translation>يقرأ Tavin النص المحدد في البرامج الأخرى عبر واجهة الإتاحة، وهي معطلة. أنهِ Tavin ثم شغّله من جديد: سيفعّل الواجهة بنفسه. ويفعّلها أيضًا تشغيل قارئ الشاشة من الإعدادات &gt; الإتاحة. وقد يلزم إعادة تشغيل البرامج المفتوحة.</translation>
    </message>
    <message>
        <source>To read selected text in other apps, turn on Tavin in System Settings &gt; Privacy &amp; Security &gt; Accessibility. If Tavin is already listed, remove it with the minus button and add it again (this happens after a rebuild).</source>
        <comment>Plasma</comment>
        <translation>يقرأ Tavin النص المحدد في البرامج الأخرى عبر واجهة الإتاحة، وهي معطلة. أنهِ Tavin ثم شغّله من جديد: سيفعّل الواجهة بنفسه. ويفعّلها أيضًا تشغيل قارئ الشاشة من إعدادات النظام &gt; الإتاحة. وقد يلزم إعادة تشغيل البرامج المفتوحة.</translation>
    </message>
    <message>
        <source>Tavin couldn&apos;t read that</source>
        <translation>تعذّر على Tavin قراءة هذا</translation>
    </message>
    <message>
        <source>Tavin needs Accessibility access</source>
        <translation>يحتاج Tavin إلى واجهة الإتاحة</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>افتح الإعدادات</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>ألغِ</translation>
    </message>
    <message>
        <source>Tavin is downloading its voices (%1%). This happens once.</source>
        <translation>ينزّل Tavin أصواته (%1%). يحدث هذا مرة واحدة.</translation>
    </message>
    <message>
        <source>Voice setup failed: %1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Tavin is still loading its voices. Try again in a few seconds.</source>
        <translation>ما زال Tavin يحمّل أصواته. حاول مجددًا بعد ثوانٍ.</translation>
    </message>
    <message>
        <source>%1 API key</source>
        <translation>مفتاح API لخدمة %1</translation>
    </message>
    <message>
        <source>Stored in your macOS Keychain. Leave empty to remove the key.</source>
        <translation>يُحفظ في حلقة مفاتيحك. اترك الحقل فارغًا لإزالة المفتاح.</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>احفظ</translation>
    </message>
    <message>
        <source>Launch at Login failed: %1</source>
        <translation>تعذّر تغيير التشغيل عند الولوج: %1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>حسنًا</translation>
    </message>
</context>
<context>
    <name>Engine</name>
    <message>
        <source>%1 needs a key: choose “Set API Key” in Tavin&apos;s menu.</source>
        <translation>يحتاج %1 إلى مفتاح: اختر “اضبط مفتاح API” من قائمة Tavin.</translation>
    </message>
    <message>
        <source>%1 does not accept the key (HTTP %2).</source>
        <translation>لا يقبل %1 المفتاح (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 wants to be paid: the account has no credit left (HTTP %2).</source>
        <translation>يطلب %1 الدفع: نفد رصيد الحساب (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 says that the account&apos;s quota is used up (HTTP %2).</source>
        <translation>يفيد %1 بنفاد حصة الحساب (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is too slow or does not answer.</source>
        <translation>لا يستجيب %1 أو أنه بطيء جدًا.</translation>
    </message>
    <message>
        <source>%1 cannot be found; this computer may be offline.</source>
        <translation>تعذّر العثور على %1. هل هذا الحاسوب متصل بالشبكة؟</translation>
    </message>
    <message>
        <source>%1 cannot read this text.</source>
        <translation>لا يستطيع %1 قراءة هذا النص.</translation>
    </message>
    <message>
        <source>No voice on this computer speaks %1.</source>
        <translation>لا يوجد صوت على هذا الحاسوب يتكلم “%1”.</translation>
    </message>
    <message>
        <source>%1 is still downloading its voices (%2%).</source>
        <translation>ما زال %1 ينزّل أصواته (%2%).</translation>
    </message>
    <message>
        <source>%1 is still loading its voices.</source>
        <translation>ما زال %1 يحمّل أصواته.</translation>
    </message>
    <message>
        <source>The key for %1 cannot be read: %2</source>
        <translation>تعذّرت قراءة مفتاح %1: %2</translation>
    </message>
    <message>
        <source>The key for %1 is kept only until Tavin ends: %2</source>
        <translation>يُحفظ مفتاح %1 حتى انتهاء Tavin فقط: %2</translation>
    </message>
    <message>
        <source>The key for %1 could not be removed: %2</source>
        <translation>تعذّرت إزالة مفتاح %1: %2</translation>
    </message>
    <message>
        <source>The keyring was not unlocked.</source>
        <translation>لم يُفك قفل حلقة المفاتيح.</translation>
    </message>
    <message>
        <source>The keyring does not answer.</source>
        <translation>حلقة المفاتيح لا تستجيب.</translation>
    </message>
    <message>
        <source>This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.</source>
        <translation>لا حلقة مفاتيح في سطح المكتب هذا مثل GNOME Keyring أو KWallet.</translation>
    </message>
    <message>
        <source>The sound server does not answer.</source>
        <translation>خادم الصوت لا يستجيب.</translation>
    </message>
    <message>
        <source>The sound output could not be started.</source>
        <translation>تعذّر بدء خرج الصوت.</translation>
    </message>
    <message>
        <source>Python&apos;s pip is missing: install the package python3-venv, then choose %1 again.</source>
        <translation>أداة pip مفقودة: ثبّت الحزمة python3-venv ثم اختر %1 مجددًا.</translation>
    </message>
    <message>
        <source>The disk is full: make room in %1, then choose %2 again.</source>
        <translation>القرص ممتلئ: أفسح مجالًا في ⁦%1⁩ ثم اختر %2 مجددًا.</translation>
    </message>
    <message>
        <source>%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.</source>
        <translation>يحتاج %1 إلى %2 م.بايت في ⁦%3⁩ والمتاح %4 م.بايت. أفسح مجالًا ثم اختر %5 مجددًا.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2. See to it, then choose %3 again.</source>
        <translation>تعذّرت الكتابة في ⁦%1⁩: %2. عالج ذلك ثم اختر %3 مجددًا.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries could not be downloaded. Check the network, then choose %2 again.</source>
        <translation>تعذّر تنزيل مكتبات %1. افحص الشبكة ثم اختر %2 مجددًا.</translation>
    </message>
    <message>
        <source>No download from %1: %2. Check the network, then choose %3 again.</source>
        <translation>تعذّر التنزيل من %1: %2. افحص الشبكة ثم اختر %3 مجددًا.</translation>
    </message>
    <message>
        <source>Getting the voices takes too long. Choose %1 again.</source>
        <translation>يستغرق جلب الأصوات وقتًا طويلًا. اختر %1 مجددًا.</translation>
    </message>
    <message>
        <source>%1 could not be set up. Choose it again.</source>
        <translation>تعذّر إعداد %1. اختره مجددًا.</translation>
    </message>
    <message>
        <source>%1 does not allow this with the key (HTTP %2).</source>
        <translation>لا يسمح %1 بذلك بهذا المفتاح (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 does not know this voice or model (HTTP %2).</source>
        <translation>لا يعرف %1 هذا الصوت أو هذا النموذج (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 is asked too often or the account&apos;s quota is used up; try again later (HTTP %2).</source>
        <translation>يتلقى %1 طلبات كثيرة جدًا أو نفدت حصة الحساب (HTTP %2). حاول مجددًا لاحقًا.</translation>
    </message>
    <message>
        <source>%1 has trouble of its own; try again later (HTTP %2).</source>
        <translation>يواجه %1 مشكلة (HTTP %2). حاول مجددًا لاحقًا.</translation>
    </message>
    <message>
        <source>%1 did not accept the text (HTTP %2).</source>
        <translation>لم يقبل %1 النص (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 did not do as asked (HTTP %2).</source>
        <translation>لم ينفّذ %1 الطلب (HTTP %2).</translation>
    </message>
    <message>
        <source>%1 broke off the connection.</source>
        <translation>قطع %1 الاتصال.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>تعذّر الوصول إلى %1: %2.</translation>
    </message>
    <message>
        <source>the proxy does not allow it</source>
        <translation>الوسيط لا يسمح بذلك</translation>
    </message>
    <message>
        <source>%1 cannot be trusted: its certificate is not valid.</source>
        <translation>لا يمكن الوثوق بـ %1: شهادته غير صالحة.</translation>
    </message>
    <message>
        <source>This choice is kept only until Tavin ends: %1.</source>
        <translation>يُحفظ هذا الاختيار حتى انتهاء Tavin فقط: %1.</translation>
    </message>
    <message>
        <source>The engine could not read this text.</source>
        <translation>تعذّر على المحرك قراءة هذا النص.</translation>
    </message>
    <message>
        <source>The keyring is locked.</source>
        <translation>حلقة المفاتيح مقفلة.</translation>
    </message>
    <message>
        <source>%1&apos;s libraries cannot be loaded (%2). Choose %3 again.</source>
        <translation>تعذّر تحميل مكتبات %1 (%2). اختر %3 مجددًا.</translation>
    </message>
    <message>
        <source>eSpeak NG is not installed (package libespeak-ng1).</source>
        <translation>برنامج eSpeak NG غير مثبّت (الحزمة libespeak-ng1).</translation>
    </message>
    <message>
        <source>%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.</source>
        <translation>يرفض %1 التنزيل (الرد %2). اختر %3 مجددًا لاحقًا أو حدّث Tavin.</translation>
    </message>
    <message>
        <source>Getting the voices stopped unexpectedly (%1). Choose %2 again.</source>
        <translation>توقف تنزيل الأصوات على نحو غير متوقع (%1). اختر %2 مجددًا.</translation>
    </message>
    <message>
        <source>it ended too early</source>
        <translation>انتهى النقل قبل الأوان</translation>
    </message>
    <message>
        <source>it went on at another place</source>
        <translation>تابع النقل من موضع آخر</translation>
    </message>
    <message>
        <source>something else was sent</source>
        <translation>أُرسل شيء آخر</translation>
    </message>
    <message>
        <source>it is too slow</source>
        <translation>النقل بطيء جدًا</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>لا رد</translation>
    </message>
    <message>
        <source>answer %1</source>
        <translation>الرد %1</translation>
    </message>
    <message>
        <source>No sound output is connected.</source>
        <translation>لا يوجد خرج صوت متصل.</translation>
    </message>
    <message>
        <source>The sound output was disconnected.</source>
        <translation>فُصل خرج الصوت.</translation>
    </message>
    <message>
        <source>The sound output could not be started (%1).</source>
        <translation>تعذّر بدء خرج الصوت (%1).</translation>
    </message>
    <message>
        <source>The sound output stopped unexpectedly (%1).</source>
        <translation>توقف خرج الصوت على نحو غير متوقع (%1).</translation>
    </message>
    <message>
        <source>%1 could not be started.</source>
        <translation>تعذّر بدء %1.</translation>
    </message>
    <message>
        <source>%1 could not be started (%2).</source>
        <translation>تعذّر بدء %1 (%2).</translation>
    </message>
    <message>
        <source>%1 stopped unexpectedly (%2) and was started again.</source>
        <translation>توقف %1 على نحو غير متوقع (%2) ثم بدأ من جديد.</translation>
    </message>
    <message>
        <source>%1 sent an answer that makes no sense.</source>
        <translation>أرسل %1 إجابة لا معنى لها.</translation>
    </message>
    <message>
        <source>%1 sent something other than sound.</source>
        <translation>أرسل %1 شيئًا غير الصوت.</translation>
    </message>
    <message>
        <source>%1 sent more sound than the text can have.</source>
        <translation>أرسل %1 صوتًا أكثر مما يمكن أن يكون للنص.</translation>
    </message>
    <message>
        <source>%1 offers no voice to this account.</source>
        <translation>لا يقدم %1 أي صوت لهذا الحساب.</translation>
    </message>
    <message>
        <source>%1 sent other files than expected. Choose %2 again, or update Tavin.</source>
        <translation>أرسل %1 ملفات غير المتوقعة. اختر %2 من جديد أو حدّث Tavin.</translation>
    </message>
    <message>
        <source>%1 offers another file than expected. Choose %2 again, or update Tavin.</source>
        <translation>يعرض %1 ملفًا غير المتوقع. اختر %2 من جديد أو حدّث Tavin.</translation>
    </message>
    <message>
        <source>Choose this voice of Piper again: it cannot be loaded (%1).</source>
        <translation>اختر صوت Piper هذا من جديد: لا يمكن تحميله (%1).</translation>
    </message>
    <message>
        <source>Choose Kokoro again: its files cannot be loaded (%1).</source>
        <translation>اختر Kokoro من جديد: لا يمكن تحميل ملفاته (%1).</translation>
    </message>
    <message>
        <source>Package python3-secretstorage is not installed.</source>
        <translation>الحزمة python3-secretstorage غير مثبتة.</translation>
    </message>
    <message>
        <source>Without a session bus, the keyring cannot be reached.</source>
        <translation>يتعذر الوصول إلى حلقة المفاتيح: لا توجد ناقلة جلسة.</translation>
    </message>
    <message>
        <source>The keyring could not be asked.</source>
        <translation>تعذّر سؤال حلقة المفاتيح.</translation>
    </message>
    <message>
        <source>What is stored there is not a key.</source>
        <translation>المحفوظ هناك ليس مفتاحًا.</translation>
    </message>
    <message>
        <source>eSpeak NG&apos;s data is missing (package espeak-ng-data).</source>
        <translation>بيانات eSpeak NG مفقودة (الحزمة espeak-ng-data).</translation>
    </message>
</context>
<context>
    <name>Login</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>تعذّر إنشاء المجلد ⁦%1⁩.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>تعذّرت كتابة ⁦%1⁩: %2</translation>
    </message>
    <message>
        <source>%1 could not be removed: %2</source>
        <translation>تعذّرت إزالة ⁦%1⁩: %2</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Hear a second, robotic voice too?</source>
        <translation>⌥ هو Alt و⌃ هو Ctrl و⇧ هو Shift.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <translation>تستخدم بعض أسطح المكتب Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <translation>عندئذ اختر ⁦⌃ Esc⁩ أو ⁦⌃⌥ R⁩، أو غيّره</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <translation>من إعدادات لوحة المفاتيح.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>GNOME</comment>
        <translation>يبدّل GNOME النوافذ بـ Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>GNOME</comment>
        <translation>اختر ⁦⌃ Esc⁩، أو غيّر اختصار GNOME من</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>GNOME</comment>
        <translation>الإعدادات &gt; لوحة المفاتيح.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Plasma</comment>
        <translation>لا يستخدم Plasma المفتاحين Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Plasma</comment>
        <translation>إن استخدمه برنامج آخر فغيّر ذلك من</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Plasma</comment>
        <translation>إعدادات النظام &gt; الاختصارات.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>Xfce</comment>
        <translation>لا يستخدم Xfce المفتاحين Alt+Escape.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>Xfce</comment>
        <translation>إن استخدمه برنامج آخر فغيّر ذلك من</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>Xfce</comment>
        <translation>الإعدادات &gt; لوحة المفاتيح.</translation>
    </message>
    <message>
        <source>macOS Speak Selection also uses ⌥ Esc.</source>
        <comment>no shortcuts</comment>
        <translation>لا يتيح سطح المكتب هذا اختصارات للبرامج.</translation>
    </message>
    <message>
        <source>Pick ⌃ Esc or ⌃⌥ R, or turn it off in</source>
        <comment>no shortcuts</comment>
        <translation>اجعل اختصاراته الخاصة تستدعي Tavin:</translation>
    </message>
    <message>
        <source>System Settings &gt; Accessibility &gt; Spoken Content.</source>
        <comment>no shortcuts</comment>
        <translation>يشرح “man tavin” الطريقة.</translation>
    </message>
    <message>
        <source>Voice engine starting…</source>
        <translation>يبدأ محرك الصوت…</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>أوقف</translation>
    </message>
    <message>
        <source>Speak Selection</source>
        <translation>اقرأ التحديد</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>استأنف</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>ألبث</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <translation>⚠︎ سطح المكتب أو برنامج آخر يستخدم ⁦%1⁩</translation>
    </message>
    <message>
        <source>⚠︎ %1 is taken by another app</source>
        <comment>no shortcuts</comment>
        <translation>⚠︎ لا يعمل ⁦%1⁩: لا يتيح سطح المكتب هذا اختصارات</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>الاختصار: ⁦%1⁩</translation>
    </message>
    <message>
        <source>Loading voices…</source>
        <translation>تُحمّل الأصوات…</translation>
    </message>
    <message>
        <source>⚠︎ Voice setup failed: %1</source>
        <translation>⚠︎ تعذّر إعداد الصوت: %1</translation>
    </message>
    <message>
        <source>Downloading voices… %1%</source>
        <translation>تُنزّل الأصوات… %1%</translation>
    </message>
    <message>
        <source>%1 (add API key)</source>
        <translation>%1 (أضف مفتاح API)</translation>
    </message>
    <message>
        <source>Engine: %1</source>
        <translation>المحرك: %1</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>يُحمّل…</translation>
    </message>
    <message>
        <source>Voice: %1</source>
        <translation>الصوت: %1</translation>
    </message>
    <message>
        <source>Speed: %1</source>
        <translation>السرعة: %1</translation>
    </message>
    <message>
        <source>Set API Key</source>
        <translation>اضبط مفتاح API</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>شغّل عند الولوج</translation>
    </message>
    <message>
        <source>Open Engine Log</source>
        <translation>افتح سجل المحرك</translation>
    </message>
    <message>
        <source>Quit Tavin</source>
        <translation>أنهِ Tavin</translation>
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
        <translation>ألبث أو استأنف</translation>
    </message>
    <message>
        <source>Speak Selection or Stop</source>
        <translation>اقرأ التحديد أو أوقف</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>Nothing to read</source>
        <translation>لا شيء يُقرأ</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Reading or paused</source>
        <translation>القراءة جارية أو متوقفة مؤقتًا</translation>
    </message>
    <message>
        <source>Not reading</source>
        <translation>لا قراءة جارية</translation>
    </message>
</context>
</TS>
