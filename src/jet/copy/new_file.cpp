// jet/copy/new_file.h
#include "jet/copy/new_file.h"

#include "jet/table/create_database.h"

namespace jet {

namespace {

constexpr const char* kEnding = ".tmp";
constexpr const char* kSortEnding = ".tmp-sort";

DatabaseHeader headerOf(const NewDatabase& what) {
    DatabaseHeader header = what.header;
    header.layout = &kJet4;
    if (header.creationDate == 0) header.creationDate = kSecurityDate;
    return header;
}

} // namespace

NewFile::NewFile(const std::filesystem::path& out, const NewDatabase& what, const WriterOptions& options)
    : io_(options.io ? options.io : systemIo()), out_(io_->resolve(out)), path_(sibling(kEnding)),
      replace_(options.replace), beforeName_(options.beforeName),
      pagesInMemory_(std::max<size_t>(options.memoryBytes / kJet4.pageSize / 2, 64)) {
    if (!replace_ && io_->exists(out_))
        throw Error(Err::DatabaseExists, "Bu adda bir dosya zaten var.").inFile(pathText(out));
    removeLeftOver();
    PageFileOptions pages;
    pages.cacheBytes = options.memoryBytes;
    pages.lockTimeoutMs = 0; // nobody else has any business with it
    const DatabaseHeader header = headerOf(what);
    auto file = PageFile::create(io_, path_, pages, kJet4.pageSize);
    ours_ = true;
    try {
        file->setCodec(makePageCodec(header.encodingKey));
        db_ = std::make_unique<OpenDatabase>(std::move(file), header, std::string());
        db_->pages().beginWrite();
        Bytes page0 = what.page0;
        if (!page0.empty()) clearUserMarks(page0);
        writeFirstPages(*db_, page0);
    } catch (...) {
        db_.reset();
        throw;
    }
}

NewFile::~NewFile() {
    if (published_) return;
    db_.reset(); // rolls back, closes, removes its .ldb
    try {
        if (ours_) io_->remove(path_);
    } catch (...) { // it is taken for left over by the next who wants the name
    }
}

std::filesystem::path NewFile::sibling(const char* ending) const {
    std::filesystem::path path = out_;
    path += ending;
    return path;
}

// One that was being made when its process died, and that nobody holds now.
void NewFile::removeLeftOver() {
    if (!io_->exists(path_)) return;
    PageFileOptions options;
    options.lockTimeoutMs = 0;
    {
        const auto file =
            PageFile::open(io_, path_, options, [](std::span<const uint8_t>) { return kJet4.pageSize; });
        if (file->readOnly() || file->users().size() > 1)
            throw Error(Err::FileInUse, "Dosyanın adında bir dosya şu anda başka bir işlemce oluşturuluyor.")
                .inFile(pathText(path_));
    }
    io_->remove(path_);
}

void NewFile::relieve() {
    PageFile& file = db_->pages();
    if (file.pageCount() - relievedAt_ < pagesInMemory_) return;
    file.commitWrite();
    file.beginWrite();
    relievedAt_ = file.pageCount();
}

std::unique_ptr<IoFile> NewFile::temporaryFile() {
    const std::filesystem::path path = sibling(kSortEnding);
    io_->remove(path);
    auto file = io_->open(path, OpenMode::CreateNew);
    io_->remove(path);
    return file;
}

void NewFile::publish() {
    db_->pages().commitWrite();
    db_.reset();
    if (beforeName_) beforeName_();
    if (replace_)
        io_->copyAccess(out_, path_);
    else if (io_->exists(out_))
        throw Error(Err::DatabaseExists, "Bu adda bir dosya zaten var.").inFile(pathText(out_));
    io_->rename(path_, out_);
    published_ = true;
    try {
        io_->syncFolder(out_.parent_path());
    } catch (const Error&) {
        // The name stands for everybody; only a power failure right now could take it back, and with it what
        // was there before comes back, whole.
    }
}

} // namespace jet
