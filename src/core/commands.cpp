// core/commands.cpp — the dispatcher: level and data-set switches, the program's own commands, and screens by
// right.
#include "core/commands.h"

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
constexpr LevelCommand kLevelCommands[] = {
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
constexpr DataSetCommand kDataSetCommands[] = {{"NormalArsiv", DataSetMode::Working},
                                               {"MezunlarArsiv", DataSetMode::Graduates},
                                               {"AyrilmaArsiv", DataSetMode::Leavers}};

constexpr const char* kOwnCommands[] = {"KullaniciDegis", "Cikis", "Versiyonda Yapılanlar",
                                        "İl İlçe Güncelleme"};

template <class Table> auto findCommand(const Table& table, const QString& key) {
    return std::find_if(std::begin(table), std::end(table),
                        [&](const auto& entry) { return key == QString::fromUtf8(entry.key); });
}

const CommandInfo* findInfo(const QString& key) {
    for (const CommandInfo& info : screenCommands())
        if (key == QString::fromUtf8(info.key)) return &info;
    return nullptr;
}

} // namespace

void ScreenRegistry::add(const QString& key, std::function<QWidget*()> factory) {
    const CommandInfo* info = findInfo(key);
    assert(info && !find(key));
    entries_.push_back({key, QString::fromUtf8(info->title), std::move(factory)});
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
    if (switchLevel(key) || switchDataSet(key) || runOwnCommand(key)) return;
    const CommandInfo* info = findInfo(key);
    if (!info) return;
    const QString title = QString::fromUtf8(info->title);
    if (!rightsOf(databases_.constants().sql(), databases_.session().user, title).enter)
        return showEntryDenied(dialogs_);
    if (key == QLatin1String("frmOgrenciBilgisiSil") &&
        !dialogs_.confirms(
            QStringLiteral("Bu bölümde yapacağınız değişiklikler tüm kayıtlarınızı etkileyebilir!\n"
                           "Yine de devam etmek istiyor musunuz?"),
            QStringLiteral("UYARI")))
        return;
    if (const ScreenEntry* entry = screens_.find(key)) shell_.openScreen(*entry);
}

bool CommandDispatcher::available(const QString& key) const {
    return screens_.find(key) || findCommand(kLevelCommands, key) != std::end(kLevelCommands) ||
           findCommand(kDataSetCommands, key) != std::end(kDataSetCommands) ||
           std::any_of(std::begin(kOwnCommands), std::end(kOwnCommands),
                       [&](const char* own) { return key == QString::fromUtf8(own); });
}

bool CommandDispatcher::switchLevel(const QString& key) {
    const auto found = findCommand(kLevelCommands, key);
    if (found == std::end(kLevelCommands)) return false;
    Session wanted = databases_.session();
    wanted.level = found->level;
    wanted.equivalence = found->equivalence;
    reconnect(wanted);
    return true;
}

bool CommandDispatcher::switchDataSet(const QString& key) {
    const auto found = findCommand(kDataSetCommands, key);
    if (found == std::end(kDataSetCommands)) return false;
    Session wanted = databases_.session();
    wanted.mode = found->mode;
    reconnect(wanted);
    return true;
}

void CommandDispatcher::reconnect(const Session& wanted) {
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

bool CommandDispatcher::runOwnCommand(const QString& key) {
    if (key == QLatin1String("KullaniciDegis"))
        changeUser();
    else if (key == QLatin1String("Cikis"))
        shell_.quit();
    else if (key == QStringLiteral("Versiyonda Yapılanlar"))
        openFileOf(QStringLiteral("\\Versiyon.htm"), Open::Document);
    else if (key == QStringLiteral("İl İlçe Güncelleme"))
        openFileOf(QStringLiteral("\\ILILCEGUNCELLE.EXE"), Open::Program);
    else
        return false;
    return true;
}

void CommandDispatcher::changeUser() {
    if (!dialogs_.confirms(QStringLiteral("Geçerli kullanıcı oturumu sonlandırılacak!\n"
                                          "           Onaylıyor musunuz?"),
                           QStringLiteral("Kullanıcı Değiştir")))
        return;
    databases_.session().user.clear();
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
