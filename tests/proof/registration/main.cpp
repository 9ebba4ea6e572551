// proof_registration — desks of one centre, each a process, register students in one profession at the same
// time. Nobody may be lost and no number given twice. Exit status 1 when anything is not so.
//   proof_registration [--processes N] [--students N] [--folder PATH]
#include "catalog/all_tables.h"
#include "catalog/templates.h"
#include "core/users.h"
#include "core/values.h"
#include "jet/check/check.h"
#include "records/quick_registration.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace orvan;

constexpr auto kUser = "müdür";
const Profession kProfession{QStringLiteral("1101"), 4, QStringLiteral("Otomotiv Mekanikerliği")};

struct Options {
    int processes = 8, students = 50;
    std::string folder;
    int worker = 0; // 1.. in a worker
};

// Takes fresh numbers whenever they are offered; nothing else may be asked or said.
class WillingClerk final : public Dialogs {
  public:
    void message(const QString& text, const QString&, Icon) override { refuse(text); }
    Answer askYesNo(const QString& text, const QString&, Answer) override {
        if (!text.startsWith(QStringLiteral("Bu kayıt ve/veya kütük numarası"))) refuse(text);
        ++asked;
        return Answer::Yes;
    }
    bool askOkCancel(const QString& text, const QString&, Icon) override { return refuse(text), false; }
    std::optional<QString> inputText(const QString& text, const QString&, const QString&,
                                     InputKind) override {
        return refuse(text), std::nullopt;
    }
    std::optional<qsizetype> choose(const QString& text, const QString&, const QStringList&,
                                    qsizetype) override {
        return refuse(text), std::nullopt;
    }
    std::optional<QString> chooseFile(const QString& title, const QString&, const QString&) override {
        return refuse(title), std::nullopt;
    }
    std::optional<QString> chooseSaveFile(const QString& title, const QString&, const QString&) override {
        return refuse(title), std::nullopt;
    }
    std::optional<QString> chooseFolder(const QString& title, const QString&) override {
        return refuse(title), std::nullopt;
    }
    std::unique_ptr<Progress> beginProgress(const QString& title, int) override {
        refuse(title);
        return nullptr;
    }

    int asked = 0;

  private:
    static void refuse(const QString& text) { throw std::runtime_error("unexpected: " + utf8(text)); }
};

QString nameOf(int worker, int student) { return QStringLiteral("Öğrenci %1-%2").arg(worker).arg(student); }

struct Centre {
    explicit Centre(const std::string& path)
        : folder(fromUtf8(path)), databases(folder, session, allTables()) {
        session.user = QString::fromUtf8(kUser);
        session.schoolYear = QStringLiteral("2008-2009");
    }
    ProgramFolder folder;
    Session session;
    DatabaseSet databases;
};

int work(const Options& options) {
    try {
        Centre centre(options.folder);
        centre.databases.connect();
        WillingClerk clerk;
        const FixedClock clock{QDate(2008, 9, 15)};
        QuickRegistration rule(centre.databases, clerk, clock);
        for (int student = 1; student <= options.students; ++student) {
            QuickForm form = rule.propose(kProfession);
            form.name = nameOf(options.worker, student);
            form.surname = QStringLiteral("Işık");
            if (rule.save(form) != QuickSave::Saved) throw std::runtime_error("a registration was refused");
        }
        std::printf("desk %d: %d students, fresh numbers taken %d times\n", options.worker, options.students,
                    clerk.asked);
        return 0;
    } catch (const std::exception& error) {
        std::printf("FAULT  desk %d: %s\n", options.worker, error.what());
        return 1;
    }
}

void prepare(const Options& options) {
    writeTemplates(fromUtf8(options.folder) + QStringLiteral("/Mdx"));
    Centre centre(options.folder);
    centre.databases.connect();
    createUser(centre.databases.constants().database(), QString::fromUtf8(kUser), QStringLiteral("1"));
    grantAll(centre.databases.constants().database(), QString::fromUtf8(kUser), {true, true});
    centre.databases.level().sql().execute(
        "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama,ID) VALUES (?,?,?,?)",
        Parameters{group::profession, kProfession.code, kProfession.name, kProfession.version});
}

bool runDesks(const Options& options) {
    const std::string program = fs::read_symlink("/proc/self/exe").string();
    std::vector<pid_t> desks;
    for (int worker = 1; worker <= options.processes; ++worker) {
        const pid_t id = ::fork();
        if (id == 0) {
            const std::string number = std::to_string(worker), students = std::to_string(options.students);
            ::execl(program.c_str(), program.c_str(), "--folder", options.folder.c_str(), "--worker",
                    number.c_str(), "--students", students.c_str(), nullptr);
            ::_exit(127);
        }
        desks.push_back(id);
    }
    bool well = true;
    for (const pid_t id : desks) {
        int status = 0;
        well = ::waitpid(id, &status, 0) == id && WIFEXITED(status) && WEXITSTATUS(status) == 0 && well;
    }
    return well;
}

class Judge {
  public:
    bool isClean() const { return faults_ == 0; }
    void say(const std::string& what) {
        ++faults_;
        std::printf("FAULT  %s\n", what.c_str());
    }
    void judge(const Options& options) {
        Centre centre(options.folder);
        centre.databases.connect();
        const auto rows = centre.databases.level().sql().query(
            "SELECT Ogr_Numarasi, Ogr_Kayit_No, Ogr_Adi FROM OgrenciBilgisi");
        std::set<QString> numbers;
        std::set<int> registrations;
        std::map<QString, int> people;
        for (size_t i = 0; i < rows.rowCount(); ++i) {
            numbers.insert(toText(rows.at(i, 0)));
            registrations.insert(static_cast<int>(rows.at(i, 1).toInt()));
            ++people[toText(rows.at(i, 2))];
        }
        const auto all = static_cast<size_t>(options.processes * options.students);
        if (rows.rowCount() != all) say(std::to_string(rows.rowCount()) + " students");
        if (numbers.size() != all) say(std::to_string(numbers.size()) + " student numbers");
        if (registrations.size() != all) say(std::to_string(registrations.size()) + " registration numbers");
        for (int i = 1; i <= static_cast<int>(all); ++i) {
            if (!registrations.contains(i)) say("registration number " + std::to_string(i) + " is missing");
            const QString number = kProfession.code + QString::number(i).rightJustified(5, QLatin1Char('0'));
            if (!numbers.contains(number)) say("student number " + utf8(number) + " is missing");
        }
        for (int worker = 1; worker <= options.processes; ++worker)
            for (int student = 1; student <= options.students; ++student)
                if (people[nameOf(worker, student)] != 1)
                    say(utf8(nameOf(worker, student)) + " is not there once");
        for (const jet::Fault& fault : jet::checkDatabase(centre.databases.level().database()).faults)
            say("check: " + fault.table + ": " + fault.text);
    }
    void judgeFolder(const std::string& folder) {
        for (const auto& entry : fs::directory_iterator(folder + "/Data"))
            if (entry.path().extension() == ".ldb") say("left over: " + entry.path().filename().string());
    }

  private:
    int faults_ = 0;
};

Options parse(int count, char** words) {
    Options options;
    for (int i = 1; i + 1 < count; i += 2) {
        const std::string name = words[i];
        if (name == "--processes")
            options.processes = std::atoi(words[i + 1]);
        else if (name == "--students")
            options.students = std::atoi(words[i + 1]);
        else if (name == "--worker")
            options.worker = std::atoi(words[i + 1]);
        else if (name == "--folder")
            options.folder = words[i + 1];
        else
            std::exit((std::fprintf(stderr, "unknown: %s\n", words[i]), 2));
    }
    return options;
}

} // namespace

int main(int count, char** words) {
    Options options = parse(count, words);
    if (options.worker > 0) return work(options);
    const fs::path parent = options.folder.empty() ? fs::temp_directory_path() : fs::path(options.folder);
    const fs::path folder = parent / ("orvan-desks-" + std::to_string(::getpid()));
    options.folder = folder.string();
    fs::create_directories(folder);
    prepare(options);
    Judge judge;
    if (!runDesks(options)) judge.say("a desk did not end well");
    judge.judge(options);
    judge.judgeFolder(options.folder);
    if (judge.isClean())
        fs::remove_all(folder);
    else
        std::printf("the files stay in %s\n", folder.c_str());
    std::printf("desks %d, students %d: %s\n", options.processes, options.processes * options.students,
                judge.isClean() ? "all there, no number twice" : "FAULTS");
    return judge.isClean() ? 0 : 1;
}
