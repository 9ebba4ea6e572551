// jet/copy/salvage.h: opening, the header, reading on demand. Which tables there are: salvage_tables.cpp.
#include "jet/copy/salvage.h"

#include "jet/database.h"
#include "jet/error.h"
#include "jet/index/sort_key.h"
#include "jet/pages/io_error.h"
#include "jet/pages/io_memory.h"
#include "jet/table/catalog.h"

#include <algorithm>
#include <map>

namespace jet {

namespace {

constexpr size_t kTablesLooked = 1000; // for the sort order
constexpr uint16_t kTurkishCodePage = 1254, kWesternCodePage = 1252;

// The four tables that every file has, as a new file has them.
std::unordered_map<PageNo, TableDef> knownSystemDefinitions() {
    CreateOptions options;
    options.io = std::make_shared<MemoryIo>();
    const auto database = Database::create("yeni.mdb", options);
    std::unordered_map<PageNo, TableDef> known;
    for (PageNo page = SystemPage::kObjects; page <= SystemPage::kRelationships; ++page)
        known.emplace(page, database->tableDef(systemTableName(page)));
    return known;
}

} // namespace

Salvage::Salvage(std::shared_ptr<Io> io, const std::filesystem::path& path, SalvageOptions options)
    : io_(std::move(io)), options_(std::move(options)) {
    try {
        opened_ = openDamaged(io_, path, options_.workCopy);
        read_.emplace(*opened_.pages);
        if (opened_.copy)
            notes_.push_back(
                "Dosyanın yanında yarım kalmış bir yazma işlemi vardı; geri alınmış hâli okundu.");
        readHeader();
        source_.emplace(
            SalvageSource{*opened_.pages, surveyPages(*opened_.pages, header_.encodingKey, options_.step)});
        systemDefinitions_ = knownSystemDefinitions();
        findTables();
        if (std::ranges::all_of(tables_, [](const SalvagedTable& table) { return table.page == 0; }) &&
            dataPages_.empty())
            throw Error(Err::NotADatabase, "Dosyada ne bir tablo ne de bir kayıt bulunabildi.");
        longValues_ = std::make_unique<LongValueReader>(*source_);
    } catch (Error& error) {
        error.inFile(pathText(path));
        throw;
    }
}

Salvage::~Salvage() = default;

// The first page decides nothing alone: the others say whether its key and version are right.
void Salvage::readHeader() {
    PageFile& file = *opened_.pages;
    const PageRef first = file.read(0);
    HeaderTrust trust = judgeHeader(first.bytes());
    header_ = jet::readHeader(first.bytes());
    bool older = false;
    try {
        older = probePageSize(first.bytes()) != kJet4.pageSize;
    } catch (const Error&) { // damage, but for a newer format whose other pages look like ours
        if (hasNewerSignature(first.bytes())) throw;
    }
    header_.layout = &kJet4;
    const uint32_t keyOfHeader = header_.encodingKey;
    chooseKey(trust.settings);
    if (older && countMarkedDefinitions(file, header_.encodingKey) == 0)
        throw Error(Err::ReadOnly, "Access 97 biçimindeki dosyalar onarılamaz; yalnızca okunabilirler.");

    headerKnown_ = trust.settings && header_.encodingKey == keyOfHeader && knowsSortOrder(header_.sortOrder);
    if (!headerKnown_) {
        header_.sortOrder = kTurkishSort;
        header_.codePage = kTurkishCodePage;
        notes_.push_back("Dosyanın başlık sayfası bozuk; ayarları öteki sayfalardan çıkarıldı.");
    }
    if (headerKnown_ && trust.password) page0_.assign(first.bytes().begin(), first.bytes().end());
    if (!trust.password) {
        header_.password.clear();
        header_.creationDate = 0;
        notes_.push_back("Dosyanın parolası okunamadığından sorulamadı; yeni dosya parolasızdır.");
    } else if (!header_.password.empty() && header_.password != options_.password) {
        throw Error(Err::InvalidPassword, "Parola geçerli değil.");
    }
}

// The key of the header, unless the pages are readable without one only.
void Salvage::chooseKey(bool believed) {
    PageFile& file = *opened_.pages;
    const size_t withKey = countPlausiblePages(file, header_.encodingKey),
                 plain = header_.encodingKey == 0 ? withKey : countPlausiblePages(file, 0);
    if (withKey == 0 && plain == 0)
        throw Error(
            Err::NotADatabase,
            believed ? "Dosyada başlığından başka okunabilen bir sayfa yok; kurtarılacak bir şey bulunamadı."
                     : "Dosya bir Access veritabanına benzemiyor ya da kodlanmış ve anahtarı yitmiş; "
                       "kurtarılacak bir sayfa bulunamadı.");
    if (plain > withKey) header_.encodingKey = 0;
}

// What most text fields are sorted by.
void Salvage::assumeSortOrder() {
    std::map<std::pair<uint16_t, uint8_t>, size_t> votes;
    size_t looked = 0;
    for (const auto& [id, place] : known_) {
        if (place == 0) continue;
        if (++looked > kTablesLooked) break;
        for (const FieldDef& field : definitionOf(id).def.fields)
            if (field.isText() && knowsSortOrder(field.sortOrder))
                ++votes[{field.sortOrder.lcid, field.sortOrder.version}];
    }
    if (votes.empty()) return;
    const auto most =
        std::ranges::max_element(votes, {}, [](const auto& vote) { return vote.second; })->first;
    header_.sortOrder = {most.first, most.second};
    header_.codePage = header_.sortOrder == kTurkishSort ? kTurkishCodePage : kWesternCodePage;
}

size_t Salvage::damagedPages() const {
    size_t pages = 0;
    for (PageNo page = 1; page < source_->file.pageCount(); ++page)
        pages += source_->pages.damaged[page] && !isFree(page);
    return pages;
}

bool Salvage::isKeyName(std::string_view name) const {
    return isUsableName(name) && canMakeTextKey(name, header_.sortOrder);
}

std::string Salvage::keyOf(std::string_view name) const {
    Bytes key;
    appendTextKey(name, header_.sortOrder, key);
    return {key.begin(), key.end()};
}

SalvagedDefinition Salvage::definition(const SalvagedTable& table) const {
    SalvagedDefinition found = definitionOf(table.id);
    found.def.name = table.name;
    return found;
}

void Salvage::readRows(const SalvagedTable& table, const TableDef& def, const TableSalvage::RowSink& sink,
                       TableLosses& losses) {
    TableSalvage(*source_, def, {pagesOf(table.id), pagesOf(table.id, true)}, table.page != 0, *longValues_)
        .read(sink, losses, options_.step);
}

} // namespace jet
