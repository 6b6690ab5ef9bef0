// The table of words. One row for each, in the order of the enumeration; the columns are English,
// German, French, Spanish, Japanese and Arabic.
#include <array>

#include "platform/qt/expansion/words.h"

namespace zephin {
namespace {

using Row = std::array<const char*, kLanguages.size()>;

constexpr std::array<Row, static_cast<std::size_t>(kLastWord) + 1> kTable{{
    // Quoted
    {"“%1”", "„%1“", "« %1 »", "«%1»", "「%1」", "«%1»"},
    // ListSeparator
    {", ", ", ", ", ", ", ", "、", "، "},
    // Unpacking
    {"Unpacking “%1”", "„%1“ wird entpackt", "Extraction de « %1 »", "Descomprimiendo «%1»",
     "「%1」を展開しています", "جارٍ استخراج «%1»"},
    // DoneOf
    {"%1 of %2", "%1 von %2", "%1 sur %2", "%1 de %2", "%1 / %2", "%1 من %2"},
    // SecondsLeft
    {"About %1 second left|About %1 seconds left", "Noch etwa %1 Sekunde|Noch etwa %1 Sekunden",
     "Environ %1 seconde restante|Environ %1 secondes restantes",
     "Queda aproximadamente %1 segundo|Quedan aproximadamente %1 segundos", "残り約 %1 秒",
     "أقل من ثانية|بقيت ثانية واحدة تقريبًا|بقيت ثانيتان تقريبًا|بقيت %1 ثوانٍ تقريبًا|بقيت %1 ثانيةً "
     "تقريبًا|بقيت %1 ثانية تقريبًا"},
    // MinutesLeft
    {"About %1 minute left|About %1 minutes left", "Noch etwa %1 Minute|Noch etwa %1 Minuten",
     "Environ %1 minute restante|Environ %1 minutes restantes",
     "Queda aproximadamente %1 minuto|Quedan aproximadamente %1 minutos", "残り約 %1 分",
     "أقل من دقيقة|بقيت دقيقة واحدة تقريبًا|بقيت دقيقتان تقريبًا|بقيت %1 دقائق تقريبًا|بقيت %1 دقيقةً "
     "تقريبًا|بقيت %1 دقيقة تقريبًا"},
    // HoursLeft
    {"About %1 hour left|About %1 hours left", "Noch etwa %1 Stunde|Noch etwa %1 Stunden",
     "Environ %1 heure restante|Environ %1 heures restantes",
     "Queda aproximadamente %1 hora|Quedan aproximadamente %1 horas", "残り約 %1 時間",
     "أقل من ساعة|بقيت ساعة واحدة تقريبًا|بقيت ساعتان تقريبًا|بقيت %1 ساعات تقريبًا|بقيت %1 ساعةً "
     "تقريبًا|بقيت %1 ساعة تقريبًا"},
    // ItemsFail
    {"%1 item cannot be unpacked.|%1 items cannot be unpacked.",
     "%1 Objekt kann nicht entpackt werden.|%1 Objekte können nicht entpackt werden.",
     "%1 élément ne peut pas être extrait.|%1 éléments ne peuvent pas être extraits.",
     "No se puede descomprimir %1 elemento.|No se pueden descomprimir %1 elementos.",
     "%1 個の項目を展開できません。",
     "يمكن استخراج جميع العناصر.|يتعذر استخراج عنصر واحد.|يتعذر استخراج عنصرين.|يتعذر استخراج %1 "
     "عناصر.|يتعذر استخراج %1 عنصرًا.|يتعذر استخراج %1 عنصر."},
    // InstallerEnded
    {"The installer has ended. Unpacking continues.",
     "Das Installationsprogramm ist beendet. Das Entpacken läuft weiter.",
     "Le programme d’installation est terminé. L’extraction continue.",
     "El instalador ha terminado. La descompresión continúa.",
     "インストーラは終了しました。展開は続いています。", "انتهى برنامج التثبيت. يستمر الاستخراج."},
    // Hide
    {"Hide", "Ausblenden", "Masquer", "Ocultar", "隠す", "إخفاء"},
    // FailureTitle
    {"Unpacking failed", "Entpacken fehlgeschlagen", "Échec de l’extraction",
     "Error al descomprimir", "展開に失敗しました", "فشل الاستخراج"},
    // Failed
    {"“%1” could not be unpacked.", "„%1“ konnte nicht entpackt werden.",
     "« %1 » n’a pas pu être extrait.", "No se ha podido descomprimir «%1».",
     "「%1」を展開できませんでした。", "تعذر استخراج «%1»."},
    // Incomplete
    {"“%1” was not unpacked completely.", "„%1“ wurde nicht vollständig entpackt.",
     "« %1 » n’a pas été extrait complètement.", "«%1» no se ha descomprimido por completo.",
     "「%1」は一部しか展開されませんでした。", "لم يُستخرج «%1» بالكامل."},
    // Folder
    {"Folder: %1", "Ordner: %1", "Dossier : %1", "Carpeta: %1", "フォルダ：%1", "المجلد: %1"},
    // Missing
    {"Missing: %1.", "Es fehlt: %1.", "Éléments manquants : %1.", "Falta: %1.",
     "不足している項目：%1", "العناصر الناقصة: %1."},
    // MissingMore
    {"Missing: %2 and %1 other.|Missing: %2 and %1 others.",
     "Es fehlt: %2 und %1 weiteres Objekt.|Es fehlt: %2 und %1 weitere Objekte.",
     "Éléments manquants : %2 et %1 autre.|Éléments manquants : %2 et %1 autres.",
     "Falta: %2 y %1 elemento más.|Falta: %2 y %1 elementos más.",
     "不足している項目：%2、ほか %1 個",
     "العناصر الناقصة: %2.|العناصر الناقصة: %2 وعنصر آخر.|العناصر الناقصة: %2 وعنصران "
     "آخران.|العناصر الناقصة: %2 و%1 عناصر أخرى.|العناصر الناقصة: %2 و%1 عنصرًا آخر.|العناصر "
     "الناقصة: %2 و%1 عنصر آخر."},
    // Left
    {"%1 item was unpacked and left in “%2”.|%1 items were unpacked and left in “%2”.",
     "%1 entpacktes Objekt wurde in „%2“ belassen.|%1 entpackte Objekte wurden in „%2“ belassen.",
     "%1 élément extrait a été laissé dans « %2 ».|%1 éléments extraits ont été laissés dans "
     "« %2 ».",
     "Se ha dejado %1 elemento descomprimido en «%2».|Se han dejado %1 elementos descomprimidos en "
     "«%2».",
     "展開された %1 個の項目は「%2」に残されています。",
     "لم يُترك شيء في «%2».|تُرك عنصر مستخرج واحد في «%2».|تُرك عنصران مستخرجان في «%2».|تُركت %1 "
     "عناصر مستخرجة في «%2».|تُرك %1 عنصرًا مستخرجًا في «%2».|تُرك %1 عنصر مستخرج في «%2»."},
    // FolderLeft
    {"The folder “%1” was left without contents.", "Der Ordner „%1“ wurde ohne Inhalt belassen.",
     "Le dossier « %1 » a été laissé sans contenu.", "La carpeta «%1» se ha dejado sin contenido.",
     "フォルダ「%1」は中身のないまま残されています。", "تُرك المجلد «%1» بلا محتويات."},
    // NothingLeft
    {"Nothing was unpacked.", "Es wurde nichts entpackt.", "Rien n’a été extrait.",
     "No se ha descomprimido nada.", "何も展開されていません。", "لم يُستخرج أي شيء."},
    // Details
    {"Details", "Details", "Détails", "Detalles", "詳細", "التفاصيل"},
    // Close
    {"Close", "Schließen", "Fermer", "Cerrar", "閉じる", "إغلاق"},
    // MissingItems
    {"Missing items", "Fehlende Objekte", "Éléments manquants", "Elementos que faltan",
     "不足している項目", "العناصر الناقصة"},
    // Warning
    {"Warning", "Warnung", "Avertissement", "Advertencia", "警告", "تحذير"},
    // NoSpaceFigures
    {"There is not enough space on the disk: %1 are needed, %2 are free.",
     "Auf dem Datenträger ist zu wenig Platz: %1 werden benötigt, %2 sind frei.",
     "L’espace disque est insuffisant : il faut %1, et %2 sont libres.",
     "No hay suficiente espacio en el disco: se necesitan %1 y hay %2 libres.",
     "ディスクの空き領域が足りません。%1 必要ですが、空きは %2 です。",
     "لا توجد مساحة كافية على القرص: يلزم %1 والمتاح %2."},
    // NoFileSlotsFigures
    {"The disk cannot hold that many files: %1 are needed, %2 are possible.",
     "Der Datenträger fasst nicht so viele Dateien: %1 werden benötigt, %2 sind möglich.",
     "Le disque ne peut pas contenir autant de fichiers : il en faut %1, et %2 sont possibles.",
     "El disco no admite tantos archivos: se necesitan %1 y caben %2.",
     "ディスクに作成できるファイルの数が足りません。%1 個必要ですが、あと %2 "
     "個しか作成できません。",
     "لا يتسع القرص لهذا العدد من الملفات: يلزم %1 والممكن %2."},
    // Other
    {"The system reports an error: %1.", "Das System meldet einen Fehler: %1.",
     "Le système signale une erreur : %1.", "El sistema notifica un error: %1.",
     "システムがエラーを報告しました：%1", "أبلغ النظام عن خطأ: %1."},
    // NoSpace
    {"There is not enough space on the disk.", "Auf dem Datenträger ist zu wenig Platz.",
     "L’espace disque est insuffisant.", "No hay suficiente espacio en el disco.",
     "ディスクの空き領域が足りません。", "لا توجد مساحة كافية على القرص."},
    // NoFileSlots
    {"The disk cannot hold that many files.", "Der Datenträger fasst nicht so viele Dateien.",
     "Le disque ne peut pas contenir autant de fichiers.", "El disco no admite tantos archivos.",
     "ディスクに作成できるファイルの数が足りません。", "لا يتسع القرص لهذا العدد من الملفات."},
    // Quota
    {"Your share of the disk is used up.", "Ihr Anteil am Datenträger ist aufgebraucht.",
     "Votre quota de disque est épuisé.", "Su cuota de disco está agotada.",
     "ディスクの割り当て容量を使い切りました。", "استُنفدت حصتك من القرص."},
    // TooLarge
    {"A file is larger than this disk or your account allows.",
     "Eine Datei ist größer, als dieser Datenträger oder Ihr Konto es erlaubt.",
     "Un fichier dépasse la taille permise par ce disque ou par votre compte.",
     "Un archivo es más grande de lo que permite este disco o su cuenta.",
     "このディスクまたはアカウントで許可された大きさを超えるファイルがあります。",
     "يوجد ملف أكبر مما يسمح به هذا القرص أو حسابك."},
    // Damaged
    {"The data in the archive are damaged.", "Die Daten im Archiv sind beschädigt.",
     "Les données de l’archive sont endommagées.",
     "Los datos del archivo comprimido están dañados.", "アーカイブのデータが壊れています。",
     "بيانات الأرشيف تالفة."},
    // NoArchive
    {"The archive is damaged or incomplete.", "Das Archiv ist beschädigt oder unvollständig.",
     "L’archive est endommagée ou incomplète.", "El archivo comprimido está dañado o incompleto.",
     "アーカイブが壊れているか、不完全です。", "الأرشيف تالف أو غير مكتمل."},
    // Unsupported
    {"The archive is encrypted or packed in a way that is not supported.",
     "Das Archiv ist verschlüsselt oder auf eine Weise gepackt, die nicht unterstützt wird.",
     "L’archive est chiffrée ou compressée d’une manière qui n’est pas prise en charge.",
     "El archivo comprimido está cifrado o usa un método que no se admite.",
     "アーカイブが暗号化されているか、対応していない方法で圧縮されています。",
     "الأرشيف مشفر أو مضغوط بطريقة غير مدعومة."},
    // NoPermission
    {"You do not have the right to write there.", "Sie haben dort kein Schreibrecht.",
     "Vous n’avez pas le droit d’y écrire.", "No tiene permiso para escribir ahí.",
     "書き込む権限がありません。", "ليس لديك إذن بالكتابة هناك."},
    // ReadOnly
    {"The disk is write-protected.", "Der Datenträger ist schreibgeschützt.",
     "Le disque est protégé en écriture.", "El disco está protegido contra escritura.",
     "ディスクは書き込み禁止です。", "القرص محمي من الكتابة."},
    // TooManyOpen
    {"Too many files are open.", "Es sind zu viele Dateien geöffnet.",
     "Trop de fichiers sont ouverts.", "Hay demasiados archivos abiertos.",
     "開いているファイルが多すぎます。", "عدد الملفات المفتوحة كبير جدًا."},
    // NameRefused
    {"The archive has names that cannot be used here.",
     "Das Archiv enthält Namen, die hier nicht möglich sind.",
     "L’archive contient des noms qui ne peuvent pas être utilisés ici.",
     "El archivo comprimido contiene nombres que no se pueden usar aquí.",
     "アーカイブにここでは使えない名前が含まれています。",
     "يحتوي الأرشيف على أسماء لا يمكن استخدامها هنا."},
    // InTheWay
    {"Other items already have these names.", "Andere Objekte haben schon diese Namen.",
     "D’autres éléments portent déjà ces noms.", "Otros elementos ya tienen esos nombres.",
     "同じ名前の項目がすでにあります。", "توجد عناصر أخرى بهذه الأسماء."},
    // Gone
    {"The folder was moved or deleted meanwhile.",
     "Der Ordner wurde inzwischen verschoben oder gelöscht.",
     "Le dossier a été déplacé ou supprimé entre-temps.",
     "La carpeta se ha movido o eliminado mientras tanto.", "フォルダが移動または削除されました。",
     "نُقل المجلد أو حُذف في هذه الأثناء."},
    // DiskFault
    {"The disk reports an error.", "Der Datenträger meldet einen Fehler.",
     "Le disque signale une erreur.", "El disco notifica un error.",
     "ディスクがエラーを報告しました。", "أبلغ القرص عن خطأ."},
    // NoMemory
    {"The system is out of memory.", "Dem System fehlt Arbeitsspeicher.",
     "Le système manque de mémoire.", "El sistema no tiene suficiente memoria.",
     "システムのメモリが足りません。", "نفدت ذاكرة النظام."},
    // BrokenOff
    {"Unpacking was broken off before it was complete.",
     "Das Entpacken wurde vor dem Ende abgebrochen.",
     "L’extraction a été interrompue avant la fin.",
     "La descompresión se ha interrumpido antes de terminar.", "展開が途中で中断されました。",
     "توقف الاستخراج قبل أن يكتمل."},
    // FreeBytes
    {"Free %1 on the disk and open the installer again.",
     "Geben Sie %1 auf dem Datenträger frei und öffnen Sie das Installationsprogramm erneut.",
     "Libérez %1 sur le disque et ouvrez à nouveau le programme d’installation.",
     "Libere %1 en el disco y abra de nuevo el instalador.",
     "ディスクの空き領域をさらに %1 確保してから、もう一度インストーラを開いてください。",
     "حرّر %1 على القرص ثم افتح برنامج التثبيت مرة أخرى."},
    // FreeSpace
    {"Free space on the disk and open the installer again.",
     "Schaffen Sie Platz auf dem Datenträger und öffnen Sie das Installationsprogramm erneut.",
     "Libérez de l’espace sur le disque et ouvrez à nouveau le programme d’installation.",
     "Libere espacio en el disco y abra de nuevo el instalador.",
     "ディスクの空き領域を増やしてから、もう一度インストーラを開いてください。",
     "حرّر مساحة على القرص ثم افتح برنامج التثبيت مرة أخرى."},
    // DeleteFiles
    {"Delete files that you do not need and open the installer again.",
     "Löschen Sie nicht benötigte Dateien und öffnen Sie das Installationsprogramm erneut.",
     "Supprimez des fichiers inutiles et ouvrez à nouveau le programme d’installation.",
     "Elimine archivos que no necesite y abra de nuevo el instalador.",
     "不要なファイルを削除してから、もう一度インストーラを開いてください。",
     "احذف الملفات التي لا تحتاجها ثم افتح برنامج التثبيت مرة أخرى."},
    // OtherDisk
    {"Open the installer again and choose a folder on another disk.",
     "Öffnen Sie das Installationsprogramm erneut und wählen Sie einen Ordner auf einem anderen "
     "Datenträger.",
     "Ouvrez à nouveau le programme d’installation et choisissez un dossier sur un autre disque.",
     "Abra de nuevo el instalador y elija una carpeta en otro disco.",
     "もう一度インストーラを開いて、別のディスクのフォルダを選んでください。",
     "افتح برنامج التثبيت مرة أخرى واختر مجلدًا على قرص آخر."},
    // GetAgain
    {"Get the installer again from its publisher and open it.",
     "Beziehen Sie das Installationsprogramm erneut vom Herausgeber und öffnen Sie es.",
     "Procurez-vous à nouveau le programme d’installation auprès de son éditeur et ouvrez-le.",
     "Obtenga de nuevo el instalador de su editor y ábralo.",
     "発行元からインストーラをもう一度入手して、開いてください。",
     "احصل على برنامج التثبيت من ناشره مرة أخرى ثم افتحه."},
    // AskPublisher
    {"Ask the publisher of the installer for help.",
     "Bitten Sie den Herausgeber des Installationsprogramms um Hilfe.",
     "Demandez de l’aide à l’éditeur du programme d’installation.",
     "Pida ayuda al editor del instalador.", "インストーラの発行元にお問い合わせください。",
     "اطلب المساعدة من ناشر برنامج التثبيت."},
    // OtherFolder
    {"Open the installer again and choose a folder that you may change.",
     "Öffnen Sie das Installationsprogramm erneut und wählen Sie einen Ordner, den Sie ändern "
     "dürfen.",
     "Ouvrez à nouveau le programme d’installation et choisissez un dossier que vous pouvez "
     "modifier.",
     "Abra de nuevo el instalador y elija una carpeta que pueda modificar.",
     "もう一度インストーラを開いて、変更できるフォルダを選んでください。",
     "افتح برنامج التثبيت مرة أخرى واختر مجلدًا يمكنك تعديله."},
    // CloseOthers
    {"Close other programs and open the installer again.",
     "Schließen Sie andere Programme und öffnen Sie das Installationsprogramm erneut.",
     "Fermez d’autres programmes et ouvrez à nouveau le programme d’installation.",
     "Cierre otros programas y abra de nuevo el instalador.",
     "ほかのプログラムを閉じてから、もう一度インストーラを開いてください。",
     "أغلق البرامج الأخرى ثم افتح برنامج التثبيت مرة أخرى."},
    // MoveAway
    {"Move those items elsewhere and open the installer again.",
     "Verschieben Sie diese Objekte und öffnen Sie das Installationsprogramm erneut.",
     "Déplacez ces éléments et ouvrez à nouveau le programme d’installation.",
     "Mueva esos elementos a otro lugar y abra de nuevo el instalador.",
     "それらの項目を移動してから、もう一度インストーラを開いてください。",
     "انقل تلك العناصر إلى مكان آخر ثم افتح برنامج التثبيت مرة أخرى."},
    // TryAgain
    {"Open the installer again.", "Öffnen Sie das Installationsprogramm erneut.",
     "Ouvrez à nouveau le programme d’installation.", "Abra de nuevo el instalador.",
     "もう一度インストーラを開いてください。", "افتح برنامج التثبيت مرة أخرى."},
}};

}  // namespace

const char* TextOf(Word word, std::size_t language) {
  return kTable.at(static_cast<std::size_t>(word)).at(language);
}

}  // namespace zephin
