// jet/database.h: opening, creating, tables by name, password, batches. Structure: create_table.cpp,
// alter_*.cpp.
#include "jet/index/sort_key.h"
#include "jet/table/create_database.h"
#include "jet/table/database_impl.h"
#include "jet/table/table_change.h"

#include <algorithm>

namespace jet {

namespace {

constexpr const char* kNoPermission = "Dosya salt okunur açıldı: dosyaya ya da klasörüne yazma izni yok.";
constexpr const char* kAskedReadOnly = "Dosya salt okunur açıldı.";
constexpr const char* kOldFormat = "Access 97 biçimindeki dosyalar yalnızca okunabilir; yazmak için dosyayı "
                                   "Access 2000 biçimine dönüştürün.";

// Why the file cannot be written; empty when it can.
std::string readOnlyReasonOf(const PageFile& file, const DatabaseHeader& header, bool asked) {
    if (header.layout->version == 3) return kOldFormat;
    if (asked) return kAskedReadOnly;
    return file.readOnly() ? kNoPermission : "";
}

DatabaseHeader headerOf(PageFile& file) {
    const ReadScope read(file);
    return readHeader(file.read(0).bytes());
}

// A file that was cut short right behind its header, or that only looks like a database.
void requireCatalog(PageFile& file) {
    const ReadScope read(file);
    if (file.pageCount() <= SystemPage::kRelationships ||
        file.read(SystemPage::kObjects).bytes()[0] != PageType::kTableDef)
        throw Error(Err::Corrupt, "Dosya bozuk: sistem tabloları okunamıyor.").onPage(SystemPage::kObjects);
}

} // namespace

Database::Database() = default;
Database::~Database() = default;

std::unique_ptr<Database> Database::open(const std::filesystem::path& path, const OpenOptions& options) {
    const std::shared_ptr<Io> io = options.io ? options.io : systemIo();
    try {
        if (!io->exists(path)) throw Error(Err::FileNotFound, "Veritabanı dosyası bulunamadı.");
        PageFileOptions pages = options.pages;
        pages.readOnly = pages.readOnly || options.readOnly;
        auto file = PageFile::open(io, path, pages, probePageSize);
        DatabaseHeader header = headerOf(*file);
        if (!options.ignorePassword && !header.password.empty() && header.password != options.password)
            throw Error(Err::InvalidPassword, "Parola geçerli değil.");
        if (header.encodingKey != 0) file->setCodec(makePageCodec(header.encodingKey));
        requireCatalog(*file);
        std::string reason = readOnlyReasonOf(*file, header, pages.readOnly);
        std::unique_ptr<Database> database(new Database);
        database->impl_ = std::make_unique<Impl>(std::move(file), std::move(header), std::move(reason));
        return database;
    } catch (Error& error) {
        error.inFile(pathText(path));
        throw;
    }
}

std::unique_ptr<Database> Database::create(const std::filesystem::path& path, const CreateOptions& options) {
    const std::shared_ptr<Io> io = options.io ? options.io : systemIo();
    try {
        if (!knowsSortOrder(options.sortOrder))
            throw Error(Err::InvalidArgument, "Bu sıralama düzeniyle veritabanı oluşturulamaz.");
        DatabaseHeader header;
        header.layout = &kJet4;
        header.codePage = options.codePage;
        header.sortOrder = options.sortOrder;
        header.creationDate = kSecurityDate;
        header.password = options.password;
        header.encodingKey = options.encodingKey;
        auto file = PageFile::create(io, path, options.pages, kJet4.pageSize);
        file->setCodec(makePageCodec(header.encodingKey));
        std::unique_ptr<Database> database(new Database);
        database->impl_ = std::make_unique<Impl>(std::move(file), std::move(header), std::string());
        WriteScope write(database->pages());
        writeNewDatabase(*database->impl_);
        write.commit();
        database->impl_->structureChanged(); // the catalog was looked at while it was being made
        return database;
    } catch (Error& error) {
        error.inFile(pathText(path));
        throw;
    }
}

const std::filesystem::path& Database::path() const { return impl_->pages().path(); }
const DatabaseHeader& Database::header() const { return impl_->header(); }
const Layout& Database::layout() const { return impl_->layout(); }
bool Database::readOnly() const { return !impl_->readOnlyReason().empty(); }
const std::string& Database::readOnlyReason() const { return impl_->readOnlyReason(); }
void Database::requireWritable() const {
    try {
        impl_->requireWritable();
    } catch (Error& error) {
        error.inFile(pathText(path()));
        throw;
    }
}
PageFile& Database::pages() { return impl_->pages(); }
PageAllocator& Database::allocator() { return impl_->allocator(); }

std::vector<std::string> Database::tableNames(TableKinds kinds) {
    const ReadScope read(pages());
    std::vector<std::string> names;
    for (const CatalogEntry& entry : impl_->catalog().entries())
        if (entry.isTable() && (kinds == TableKinds::All || !entry.isSystem())) names.push_back(entry.name);
    const SortOrder order = knowsSortOrder(header().sortOrder) ? header().sortOrder : kGeneralSort;
    std::sort(names.begin(), names.end(), [&](const std::string& a, const std::string& b) {
        const int compared = compareText(a, b, order);
        return compared != 0 ? compared < 0 : a < b;
    });
    return names;
}

bool Database::hasTable(std::string_view name) {
    const ReadScope read(pages());
    const CatalogEntry* entry = impl_->catalog().find(name);
    return entry && entry->isTable();
}

const TableDef& Database::tableDef(std::string_view name) {
    try {
        const ReadScope read(pages());
        return *impl_->definition(impl_->tableEntry(name).page()); // kept alive by the open file
    } catch (Error& error) {
        error.inFile(pathText(path())).inTable(name);
        throw;
    }
}

Table Database::openTable(std::string_view name) {
    try {
        const ReadScope read(pages());
        return {*impl_, impl_->tableEntry(name).page()};
    } catch (Error& error) {
        error.inFile(pathText(path())).inTable(name);
        throw;
    }
}

void Database::changePassword(std::string_view current, const std::string& wanted) {
    statement(*impl_, {}, [&] {
        PageEdit page = pages().edit(0);
        if (readHeader(page.bytes()).password != current)
            throw Error(Err::InvalidPassword, "Parola geçerli değil.");
        writePassword(page.bytes(), wanted);
        if (readHeader(page.bytes()).password != wanted)
            throw Error(Err::InvalidArgument, "Parola yazıldığı gibi geri okunamadı; değiştirilmedi.");
    });
    impl_->setPassword(wanted);
}

WriteBatch::WriteBatch(Database& database) : file_(&database.pages()) {
    database.requireWritable();
    file_->beginWrite();
}

WriteBatch::~WriteBatch() {
    if (done_) return;
    try {
        file_->commitWrite();
    } catch (...) { // nobody to tell here; commit() tells
    }
}

void WriteBatch::commit() {
    done_ = true;
    file_->commitWrite();
}

} // namespace jet
