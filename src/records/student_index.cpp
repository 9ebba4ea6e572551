// records/student_index.cpp — see student_index.h.
#include "records/student_index.h"

#include "core/turkish_text.h"
#include "core/values.h"

#include <algorithm>
#include <QStringList>

namespace orvan {
namespace {

constexpr auto kNameIndex = "indAdSoyad";
constexpr const char* kFields[] = {"Ogr_Numarasi", "Ogr_Adi", "Ogr_Soyadi", "Ogr_Mernis", "Ogr_Kayit_No"};

// `word` begins some word of the text. Both in lower case; words of a text end at a blank.
bool beginsWord(const QString& text, const QString& word) {
    for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1))
        if (at == 0 || text[at - 1] == QLatin1Char(' ')) return true;
    return false;
}

enum Rank { Exact, Begins, Inside, None };

Rank rankOf(const StudentKey& key, const QStringList& words) {
    bool begins = true;
    for (const QString& word : words) {
        if (!key.searched.contains(word)) return None;
        begins = begins && beginsWord(key.searched, word);
    }
    if (words.size() == 1) {
        const QString& word = words.front();
        if (word == key.identityNo || word == key.registrationNo || word == lowerTurkish(key.number))
            return Exact;
    }
    return begins ? Begins : Inside;
}

} // namespace

QString StudentKey::shown() const {
    return number + QStringLiteral("  ") + name + QLatin1Char(' ') + surname;
}

void StudentIndex::load(jet::Database& level) {
    jet::Table students = level.openTable("OgrenciBilgisi");
    const jet::ReadScope scope(level.pages());
    const jet::TableDef& def = students.def();
    std::vector<std::optional<size_t>> places;
    for (const char* field : kFields)
        places.push_back(def.findField(field));
    const bool inOrder = def.findIndex(kNameIndex) != nullptr;
    keys_.clear();
    for (jet::Scan scan = inOrder ? students.scan(kNameIndex, {}) : students.scan(); scan.next();) {
        const auto text = [&](size_t which) {
            return places[which] ? trimmedText(scan.value(*places[which])) : QString();
        };
        StudentKey key{text(0), text(1), text(2), text(3), text(4), {}};
        key.searched = lowerTurkish(
            QStringList{key.number, key.name, key.surname, key.identityNo, key.registrationNo}.join(
                QLatin1Char(' ')));
        if (!key.number.isEmpty()) keys_.push_back(std::move(key));
    }
    if (inOrder) return;
    std::stable_sort(keys_.begin(), keys_.end(), [](const StudentKey& a, const StudentKey& b) {
        const int names = compareTurkish(a.name, b.name);
        return names != 0 ? names < 0 : lessTurkish(a.surname, b.surname);
    });
}

std::vector<const StudentKey*> StudentIndex::find(const QString& typed, size_t most) const {
    const QStringList words = lowerTurkish(typed).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty()) return {};
    std::vector<const StudentKey*> byRank[None];
    for (const StudentKey& key : keys_)
        if (const Rank rank = rankOf(key, words); rank != None && byRank[rank].size() < most)
            byRank[rank].push_back(&key);
    std::vector<const StudentKey*> found;
    for (const auto& ranked : byRank)
        found.insert(found.end(), ranked.begin(), ranked.end());
    if (found.size() > most) found.resize(most);
    return found;
}

} // namespace orvan
