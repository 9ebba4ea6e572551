// records/class_counts.cpp — see class_counts.h.
#include "records/class_counts.h"

#include "core/turkish_text.h"
#include "core/values.h"
#include "reference/code_lists.h"

#include <map>
#include <set>

namespace orvan {
namespace {

constexpr size_t kFinalExam = 4, kGraduated = 5, kExternal = 6, kOther = 7;

struct Less {
    bool operator()(const QString& a, const QString& b) const { return lessTurkish(a, b); }
};

size_t stageOf(const QString& stage) {
    if (stage.size() >= 1 && stage[0] >= QLatin1Char('1') && stage[0] <= QLatin1Char('4'))
        return static_cast<size_t>(stage[0].digitValue() - 1);
    for (const size_t known : {kFinalExam, kGraduated, kExternal})
        if (sameTurkish(stage, stageTitle(known))) return known;
    return kOther;
}

bool isInTraining(const QString& stage) {
    return !stage.isEmpty() && stage[0] >= QLatin1Char('0') && stage[0] <= QLatin1Char('9');
}

void addSex(ClassCount& count, const QString& sex) {
    const QString letter = upperTurkish(sex).left(1);
    ++(letter.isEmpty() ? count.unknown : letter == QLatin1String("E") ? count.boys : count.girls);
}

struct Gathered {
    ClassCount count;
    std::set<QString, Less> professions;
};

} // namespace

QString stageTitle(size_t stage) {
    switch (stage) {
    case kFinalExam: return QStringLiteral("BİTİRME");
    case kGraduated: return QStringLiteral("MEZUN");
    case kExternal: return QStringLiteral("DIŞARDAN");
    case kOther: return QStringLiteral("Diğer");
    default: return QString::number(stage + 1);
    }
}

std::vector<ClassCount> classCounts(jet::SqlSession& level, CountedStudents counted) {
    std::map<QString, Gathered, Less> classes;
    const auto defined = level.query("SELECT SinifAdi FROM Sinif");
    for (size_t i = 0; i < defined.rowCount(); ++i) {
        const QString name = trimmedText(defined.at(i, 0));
        if (!name.isEmpty()) classes[name].count.className = name;
    }
    std::map<std::pair<QString, int>, QString> names;
    for (const Profession& each : professions(level))
        names[{each.code, each.version}] = each.name;
    const auto rows = level.query("SELECT Ogr_Sinif, Ogr_Cinsiyeti, Ogr_Seviye, Ogr_MeslekKod, DersID, "
                                  "Ogr_Nufus_Cinsiyeti FROM OgrenciBilgisi");
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        const auto text = [&](size_t column) { return trimmedText(rows.at(i, column)); };
        if (counted == CountedStudents::InTraining && !isInTraining(text(2))) continue;
        Gathered& gathered = classes[text(0)];
        if (gathered.count.className.isEmpty()) gathered.count.className = text(0);
        addSex(gathered.count, text(1).isEmpty() ? text(5) : text(1));
        ++gathered.count.stages[stageOf(text(2))];
        const auto name = names.find({text(3), text(4).toInt()});
        gathered.professions.insert(name == names.end() ? text(3) : name->second);
    }
    std::vector<ClassCount> counts;
    for (auto& [name, gathered] : classes) {
        const QStringList all(gathered.professions.begin(), gathered.professions.end());
        gathered.count.professions = all.join(QStringLiteral(", "));
        counts.push_back(gathered.count);
    }
    return counts;
}

ClassCount sumOf(const std::vector<ClassCount>& counts) {
    ClassCount sum;
    for (const ClassCount& each : counts) {
        sum.girls += each.girls;
        sum.boys += each.boys;
        sum.unknown += each.unknown;
        for (size_t stage = 0; stage < kStageCount; ++stage)
            sum.stages[stage] += each.stages[stage];
    }
    return sum;
}

} // namespace orvan
