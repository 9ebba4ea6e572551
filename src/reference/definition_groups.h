// reference/definition_groups.h — the eight groups of coded definitions that a person edits: which fields
// each has, what words it goes by, and where its codes are used. Data only.
#pragma once

#include "core/schema.h"

#include <span>

namespace orvan {

// A place where records repeat a definition's code or its description.
struct DefinitionUse {
    enum By { Code, Description, Either };
    DatabaseKind database; // level, workplaces or coordinators
    const char* table;
    const char* field;
    By by;
    const char* versionField; // curriculum version of the record; nullptr where it has none
    const char* words;        // what is counted: "öğrenci"
};

enum class Versions { None, Curriculum }; // Curriculum: a code may stand once in each curriculum version

struct DefinitionGroup {
    const char* command; // key of the screen's command
    const char* group;   // Ta_Tanim_Grup
    const char* one;     // "meslek", in the middle of a sentence
    Versions versions = Versions::None;
    std::span<const char* const> extraFields = {}; // beside code and description
    std::span<const DefinitionUse> uses = {};
    std::span<const char* const> fixedDescriptions = {}; // the program looks these up by their words
};

std::span<const DefinitionGroup> definitionGroups();
const DefinitionGroup& definitionGroup(const QString& command); // REQUIRES: there is one

inline constexpr auto kCodeField = "Ta_Tanim_Kod";
inline constexpr auto kDescriptionField = "Ta_tanim_aciklama";
inline constexpr auto kGroupField = "Ta_Tanim_Grup";
inline constexpr auto kVersionField = "ID";
inline constexpr auto kInForceField = "YururlulukTarihi";

// The regulations that begin the curriculum versions.
inline constexpr int kFirstVersion = 1, kLastVersion = 4;
QString versionInForceFrom(int version); // "15.09.2017"; empty for no such version

} // namespace orvan
