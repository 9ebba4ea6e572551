// core/commands.cpp — the dispatcher: screens by right, level and data-set switches, the program's own
// commands.
#include "core/commands.h"

#include "core/archives.h"
#include "core/general_error.h"
#include "core/users.h"
#include "core/values.h"

#include <algorithm>
#include <cassert>
#include <QFileInfo>

namespace orvan {
namespace {

struct LevelCommand {
    const char* key;
    Level level;
    bool equivalence;
};
constexpr LevelCommand kLevels[] = {
    {"ToolKalfa", Level::Kalfa, false},
    {"ToolUsta", Level::Usta, false},
    {"ToolUstaOgretici", Level::UstaOgretici, false},
    {"Toolisyeriacma", Level::IsyeriAcma, false},
    {"ToolDenklikK", Level::Kalfa, true},
    {"ToolDenklikU", Level::Usta, true},
};

struct DataSetCommand {
    const char* key;
    DataSetMode mode;
};
constexpr DataSetCommand kDataSets[] = {{"NormalArsiv", DataSetMode::Working},
                                        {"MezunlarArsiv", DataSetMode::Graduates},
                                        {"AyrilmaArsiv", DataSetMode::Leavers}};

template <class Table> const auto& entryOf(const Table& table, const QString& key) {
    return *std::find_if(std::begin(table), std::end(table),
                         [&](const auto& entry) { return key == QLatin1String(entry.key); });
}

} // namespace

QString levelCommand(const Session& session) {
    for (const LevelCommand& command : kLevels)
        if (LevelPaths::choose(command.level, command.equivalence) ==
            LevelPaths::choose(session.level, session.equivalence))
            return QLatin1String(command.key);
    return {};
}

QString dataSetCommand(const Session& session) {
    for (const DataSetCommand& command : kDataSets)
        if (command.mode == session.mode) return QLatin1String(command.key);
    return {};
}

void ScreenRegistry::add(const QString& key, const QString& window, std::function<QWidget*()> factory) {
    const CommandInfo* command = findCommand(key);
    assert(command && command->kind == CommandKind::Screen && !find(key));
    const QString title = QString::fromUtf8(command->title);
    entries_.push_back({key, window, title, title, std::move(factory)});
}

void ScreenRegistry::addInner(ScreenEntry entry) {
    assert(!findCommand(entry.key) && !find(entry.key));
    entries_.push_back(std::move(entry));
}

const ScreenEntry* ScreenRegistry::find(const QString& key) const {
    for (const ScreenEntry& entry : entries_)
        if (entry.key == key) return &entry;
    return nullptr;
}

CommandDispatcher::CommandDispatcher(const ScreenRegistry& screens, DatabaseSet& databases, Dialogs& dialogs,
                                     Shell& shell)
    : screens_(screens), databases_(databases), dialogs_(dialogs), shell_(shell) {}

void CommandDispatcher::onCommand(const QString& key) {
    const CommandInfo* command = findCommand(key);
    if (!command || !mayEnter(QString::fromUtf8(command->title))) return;
    switch (command->kind) {
    case CommandKind::Screen: return openScreen(key);
    case CommandKind::Level: return switchLevel(key);
    case CommandKind::DataSet: return switchDataSet(key);
    case CommandKind::Own: return runOwnCommand(key);
    }
}

void CommandDispatcher::onRequest(const QString& key) {
    if (findCommand(key)) return onCommand(key);
    const ScreenEntry* inner = screens_.find(key);
    if (inner && mayEnter(inner->rights)) shell_.openScreen(*inner);
}

bool CommandDispatcher::available(const QString& key) const {
    const CommandInfo* command = findCommand(key);
    return command && (command->kind != CommandKind::Screen || screens_.find(key));
}

bool CommandDispatcher::mayEnter(const QString& title) {
    if (title.isEmpty()) return true;
    if (rightsOf(databases_.constants().sql(), databases_.session().user, title).enter) return true;
    showEntryDenied(dialogs_);
    return false;
}

void CommandDispatcher::openScreen(const QString& key) {
    if (key == QLatin1String("frmOgrenciBilgisiSil") &&
        !dialogs_.confirms(
            QStringLiteral("Bu bölümde yapacağınız değişiklikler tüm kayıtlarınızı etkileyebilir!\n"
                           "Yine de devam etmek istiyor musunuz?"),
            QStringLiteral("UYARI")))
        return;
    if (const ScreenEntry* entry = screens_.find(key)) shell_.openScreen(*entry);
}

void CommandDispatcher::switchLevel(const QString& key) {
    const LevelCommand& command = entryOf(kLevels, key);
    Session wanted = databases_.session();
    wanted.level = command.level;
    wanted.equivalence = command.equivalence;
    reconnect(wanted);
}

// The working set has the school's current year, which Connect reads; an archive the year that is chosen.
void CommandDispatcher::switchDataSet(const QString& key) {
    Session wanted = databases_.session();
    wanted.mode = entryOf(kDataSets, key).mode;
    wanted.schoolYear.clear();
    if (wanted.mode != DataSetMode::Working) {
        const auto year = chooseArchiveYear(databases_.folder(), wanted.mode, dialogs_);
        if (!year) return;
        wanted.schoolYear = *year;
    }
    reconnect(wanted);
}

void CommandDispatcher::reconnect(const Session& wanted) {
    if (!shell_.settleScreens()) return;
    const Session before = databases_.session();
    databases_.session() = wanted;
    try {
        databases_.connect();
    } catch (const std::exception& error) {
        databases_.session() = before;
        const auto general = GeneralError::from(error, QStringLiteral("Connect"));
        if (showGeneralError(dialogs_, general, AfterError::MayContinue) == AfterError::EndProgram)
            shell_.quit();
        return;
    }
    shell_.databaseChanged();
}

void CommandDispatcher::runOwnCommand(const QString& key) {
    if (key == QLatin1String("KullaniciDegis"))
        changeUser();
    else if (key == QLatin1String("Cikis"))
        shell_.quit();
    else if (key == QStringLiteral("Versiyonda Yapılanlar"))
        openFileOf(QStringLiteral("\\Versiyon.htm"), Open::Document);
    else if (key == QStringLiteral("Kullanım Kılavuzu"))
        openFileOf(QStringLiteral("\\Kilavuz.htm"), Open::Document);
    else
        openFileOf(QStringLiteral("\\ILILCEGUNCELLE.EXE"), Open::Program);
}

// The next user begins where the program begins: what this one was working on may be closed to him.
void CommandDispatcher::changeUser() {
    if (!dialogs_.confirms(QStringLiteral("Geçerli kullanıcı oturumu sonlandırılacak!\n"
                                          "           Onaylıyor musunuz?"),
                           QStringLiteral("Kullanıcı Değiştir")))
        return;
    if (!shell_.settleScreens()) return;
    Session& session = databases_.session();
    const Session fresh;
    session.user.clear();
    session.level = fresh.level;
    session.equivalence = fresh.equivalence;
    session.mode = fresh.mode;
    session.schoolYear.clear();
    shell_.signInAgain();
}

void CommandDispatcher::openFileOf(const QString& literal, Open how) {
    const QString file = databases_.folder().resolve(literal);
    if (!QFileInfo::exists(file)) {
        dialogs_.message(file + QStringLiteral(" dosyası bulunamadı."), QStringLiteral("Dosya Bulunamadı"),
                         Icon::Warning);
    } else if (how == Open::Document) {
        shell_.showDocument(file);
    } else if (!shell_.startProgram(file)) {
        dialogs_.message(file + QStringLiteral(" çalıştırılamadı."), QStringLiteral("Uyarı"), Icon::Warning);
    }
}

} // namespace orvan
