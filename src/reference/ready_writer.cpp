// reference/ready_writer.cpp — see ready_writer.h.
#include "reference/ready_writer.h"

#include "core/row_writer.h"
#include "core/values.h"
#include "reference/code_lists.h"
#include "reference/curricula.h"
#include "reference/definition_groups.h"
#include "reference/ready_data.h"

#include <algorithm>
#include <string_view>

namespace orvan {
namespace {

using jet::Value;

constexpr int kWeeksInYear = 36;
constexpr int kPassMark = 50;
constexpr int kVersions[] = {3, 4};

// Hours of the years of one track.
struct Years {
    const char* track;
    std::string_view hours; // a digit per year
};

std::vector<Years> yearsOf(const ReadyCourse& course, ReadyLevel level, int version) {
    if (level == ReadyLevel::Master) return {{track::master, {&course.master, 1}}};
    const std::string_view hours = version == 3 ? course.third : course.fourth;
    const size_t slash = hours.find('/');
    if (slash == std::string_view::npos) return {};
    return {{track::primary, hours.substr(0, slash)}, {track::highSchool, hours.substr(slash + 1)}};
}

int most(const std::vector<Years>& years) {
    int highest = 0;
    for (const Years& each : years)
        for (const char digit : each.hours)
            highest = std::max(highest, digit - '0');
    return highest;
}

class Writer {
  public:
    Writer(jet::Database& database, ReadyLevel level)
        : level_(level), definitionTable_(database.openTable("Parametrik_giris")),
          courseTable_(database.openTable("DersHavuzu")),
          curriculumTable_(database.openTable(kCurriculumTable)),
          definitions_(definitionTable_,
                       {"Ta_Tanim_Grup", "Ta_Tanim_Kod", "Ta_tanim_aciklama", "Ta_Tanim_Kisaisim",
                        "Ta_Ilkogretim_Sure", "Ta_Lise_Sure", "Ta_Ustalik_Sure", "ID", "YururlulukTarihi"}),
          courses_(courseTable_,
                   {"ID", "DersKodu", "DersAdi", "DersKisaAdi", "DersHaftalikSaat", "DersToplamSaat",
                    "DersTuru", "DersUygulama", "DersTurkce", "YururlulukTarihi"}),
          rows_(curriculumTable_,
                {"ID", "MeslekKodu", "MeslekOgrenciTuru", "MeslekOgrenimDurumu", "MeslekOgrenimYili",
                 "MeslekDersKodu", "MeslekDersSaat", "MeslekToplamSaat", "MeslekDersGecmeNotu",
                 "MeslekUygulama", "MeslekTurkce", "MeslekBitirmeMuaf", "MeslekKayitSira",
                 "MeslekYururlulukTarihi"}) {}

    void write(int version) {
        version_ = version;
        date_ = textValue(versionInForceFrom(version));
        for (const ReadyMainProfession& each : readyMainProfessions())
            define(group::mainProfession, each.code, each.name, Value());
        for (const ReadyCourse& course : readyGeneralCourses())
            addCourse(course, course.code, "K");
        for (const ReadyCourse& course : readyCommonCourses())
            addCourse(course, course.code, "M");
        for (const ReadyProfession& profession : readyProfessions()) {
            define(group::profession, profession.code, profession.name, Value(profession.shortName));
            for (const ReadyCourse& course : profession.courses)
                addCourse(course, ownCode(profession, course), "M");
            addCurriculum(profession);
        }
    }

  private:
    static std::string ownCode(const ReadyProfession& profession, const ReadyCourse& course) {
        return std::string(profession.code) + '.' + course.code;
    }
    static bool isTurkish(std::string_view code) { return code == "TRK" || code == "TDE"; }

    void define(const char* group, const char* code, const char* name, Value shortName) {
        const bool profession = std::string_view(group) == group::profession;
        const auto years = [&](int count) { return profession ? Value(count) : Value(); };
        definitions_.add({Value(group), Value(code), Value(name), std::move(shortName),
                          years(version_ == 3 ? 3 : 4), years(2), years(1), Value(version_), date_});
    }

    void addCourse(const ReadyCourse& course, const std::string& code, const char* kind) {
        const int hours = most(yearsOf(course, level_, version_));
        if (hours == 0) return;
        courses_.add({Value(version_), Value(code), Value(course.name), Value(course.shortName), Value(hours),
                      Value(hours * kWeeksInYear), Value(kind), Value(false), Value(isTurkish(code)), date_});
    }

    // The years of a track one after the other; in a year first the courses that all have.
    void addCurriculum(const ReadyProfession& profession) {
        const char* const tracks[] = {track::primary, track::highSchool, track::master};
        for (const char* track : tracks) {
            int order = 0;
            for (size_t year = 0; year < 4; ++year) {
                for (const ReadyCourse& course : readyGeneralCourses())
                    addRow(profession, course, course.code, track, year, order);
                for (const ReadyCourse& course : readyCommonCourses())
                    addRow(profession, course, course.code, track, year, order);
                for (const ReadyCourse& course : profession.courses)
                    addRow(profession, course, ownCode(profession, course), track, year, order);
            }
        }
    }

    void addRow(const ReadyProfession& profession, const ReadyCourse& course, const std::string& code,
                const char* track, size_t year, int& order) {
        for (const Years& years : yearsOf(course, level_, version_)) {
            if (std::string_view(years.track) != track || year >= years.hours.size()) continue;
            const int hours = years.hours[year] - '0';
            if (hours == 0) continue;
            rows_.add({Value(version_), Value(profession.code),
                       Value(level_ == ReadyLevel::Master ? "Usta" : "Kalfa"), Value(track),
                       Value(static_cast<int32_t>(year) + 1), Value(code), Value(hours),
                       Value(hours * kWeeksInYear), Value(kPassMark), Value(false), Value(isTurkish(code)),
                       Value(false), Value(++order), date_});
        }
    }

    ReadyLevel level_;
    jet::Table definitionTable_, courseTable_, curriculumTable_;
    RowWriter definitions_, courses_, rows_;
    int version_ = 0;
    Value date_;
};

} // namespace

void writeReadyCurricula(jet::Database& database, ReadyLevel level) {
    Writer writer(database, level);
    for (const int version : kVersions)
        writer.write(version);
}

} // namespace orvan
