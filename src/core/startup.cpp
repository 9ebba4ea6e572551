// core/startup.cpp — the steps of the start, in order. Longer steps: start_corrections.cpp,
// structure_check.cpp.
#include "core/startup.h"

#include "core/passwords.h"
#include "core/structure_check.h"
#include "core/users.h"
#include "core/values.h"

#include <QDir>
#include <QFileInfo>

namespace orvan {
namespace {

bool claim(Start& start) {
    if (start.host.claimFolder()) return true;
    start.dialogs.message(QStringLiteral("Çalışan program zaten var..."), QStringLiteral("Dikkat"),
                          Icon::Critical);
    return false;
}

bool setInitialLevel(Start& start) {
    start.session.level = Level::Kalfa;
    start.host.makeSplash();
    return true;
}

// All data lie in the program's folder, so nothing can be done where this user may not write.
bool tellUnlessWritable(Start& start, const QString& literal) {
    const bool isFolder =
        QFileInfo(start.folder.resolve(literal)).isDir(); // else a later step says what is wrong
    if (!isFolder || start.folder.mayWrite(literal)) return true;
    start.dialogs.message(
        QDir::toNativeSeparators(start.folder.resolve(literal)) +
            QStringLiteral(
                "\nklasörüne yazılamıyor.\n\nProgram, verilerini bu klasörde tutar; onu kullanan herkesin "
                "bu klasöre yazma izni olmalıdır.\nBu izni, bilgisayarın ya da ağ paylaşımının "
                "sorumlusundan isteyiniz."),
        QStringLiteral("Dikkat"), Icon::Critical);
    return false;
}

bool takeProgramFolder(Start& start) {
    if (QFileInfo(start.folder.path()).isDir()) return tellUnlessWritable(start, QString());
    jet::Error error(jet::Err::PathNotValid, "Program klasörü bulunamadı.");
    throw error.inFile(utf8(start.folder.path()));
}

bool setFormats(Start& start) {
    start.host.setRegionalFormats();
    return true;
}

bool showSplash(Start& start) {
    start.host.showSplash();
    return true;
}

// Data of the release that kept all levels in one file are not read by this one: nothing is lost by going on
// with new files, but the person must know.
bool noticeOldDatabase(Start& start) {
    const QString old = QStringLiteral("\\Data\\Ogrenci.Mdb");
    if (!start.folder.exists(old) || start.folder.exists(QStringLiteral("\\Data\\Kalfa.Mdb"))) return true;
    return start.dialogs.confirms(
        start.folder.resolve(old) +
            QStringLiteral(
                "\ndosyası, bütün düzeylerin tek veritabanında tutulduğu eski bir sürümden kalmış.\n"
                "Bu dosya olduğu gibi bırakılır; içindeki öğrenciler bu sürüme kendiliğinden aktarılmaz.\n\n"
                "Boş dosyalarla devam edilsin mi?"),
        QStringLiteral("Dikkat"));
}

bool makeDataFolder(Start& start) {
    start.folder.ensureFolder(QStringLiteral("\\Data"));
    return tellUnlessWritable(start, QStringLiteral("\\Data"));
}

bool sweep(Start& start) {
    sweepPasswords(start.folder, start.session);
    return true;
}

bool makeExamTables(Start& start) {
    createExamTables(start.folder, start.databases.schema());
    return true;
}

bool showMainWindow(Start& start) {
    start.host.showMainWindow();
    return true;
}

bool clearPasswords(Start& start) {
    clearAllPasswords(start.folder, start.session);
    return true;
}

// Files of an older release lack tables or fields that Connect opens: then the structure check is forced and
// connects.
bool connect(Start& start) {
    try {
        start.databases.connect();
    } catch (const jet::Error& error) {
        if (error.number() != jet::Err::NoSuchTable && error.number() != jet::Err::NoSuchItem) throw;
        start.databases.close();
    }
    return true;
}

bool checkStructureAndRights(Start& start) {
    const QString argument = start.databases.isOpen() ? QString() : QStringLiteral("Check1");
    start.session.upgradeNeeded = needsStructureCheck(start.folder, argument);
    if (start.session.upgradeNeeded) {
        start.databases.close(); // the upgrade has the files to itself
        checkStructure(start.folder, start.session, start.databases.schema(), start.dialogs, argument);
        start.databases.connect();
    }
    renameStoredRights(start.databases.constants().sql());
    return true;
}

bool correctStudents(Start& start) {
    correctOldStudents(start.folder, start.session);
    return true;
}

constexpr StartStepInfo kBeforeSignIn[] = {
    {StartStep::SingleInstance, "Program denetleniyor", claim},
    {StartStep::InitialLevel, "Düzey seçiliyor", setInitialLevel},
    {StartStep::ProgramFolder, "Program klasörü aranıyor", takeProgramFolder},
    {StartStep::RegionalFormats, "Bölgesel biçimler ayarlanıyor", setFormats},
    {StartStep::Splash, "Program açılıyor", showSplash},
    {StartStep::OldSingleDatabase, "Eski veritabanı aranıyor", noticeOldDatabase},
    {StartStep::DataFolder, "Veri klasörü denetleniyor", makeDataFolder},
    {StartStep::PasswordSweep, "Veritabanı parolaları denetleniyor", sweep},
    {StartStep::ExamTables, "Sınav dosyaları denetleniyor", makeExamTables},
    {StartStep::MainWindow, "Ana pencere açılıyor", showMainWindow},
};

constexpr StartStepInfo kAfterSignIn[] = {
    {StartStep::ClearPasswords, "Veritabanı parolaları kaldırılıyor", clearPasswords},
    {StartStep::Connect, "Veritabanlarına bağlanılıyor", connect},
    {StartStep::StructureCheck, "Veritabanı yapısı denetleniyor", checkStructureAndRights},
    {StartStep::OldStudents, "Eski öğrenci kayıtları denetleniyor", correctStudents},
};

bool run(Start& start, std::span<const StartStepInfo> steps) {
    for (const StartStepInfo& info : steps) {
        start.host.stepBegins(info.step, QString::fromUtf8(info.name));
        if (!info.run(start)) return false;
    }
    return true;
}

} // namespace

std::span<const StartStepInfo> stepsBeforeSignIn() { return kBeforeSignIn; }
std::span<const StartStepInfo> stepsAfterSignIn() { return kAfterSignIn; }

bool runStart(Start& start) { return run(start, kBeforeSignIn); }

void openAfterSignIn(Start& start) {
    run(start, kAfterSignIn);
    start.host.maintain();
}

} // namespace orvan
