// jet/pages/io_error.h: one Turkish sentence per kind of failure, then the system's own reason.
#include "jet/pages/io_error.h"

namespace jet {

namespace {

std::string failed(IoAction action) {
    switch (action) {
    case IoAction::Open: return "Dosya açılamadı";
    case IoAction::Read: return "Dosya okunamadı";
    case IoAction::Write: return "Dosyaya yazılamadı";
    case IoAction::Truncate: return "Dosyanın boyu değiştirilemedi";
    case IoAction::Sync: return "Dosya diske işlenemedi";
    case IoAction::Lock: return "Dosya kilitlenemedi";
    case IoAction::Remove: return "Dosya silinemedi";
    case IoAction::Rename: return "Dosyanın adı değiştirilemedi";
    case IoAction::Folder: return "Klasör diske işlenemedi";
    }
    return "Dosya işlemi yapılamadı";
}

std::string sentence(Err number, IoAction action) {
    switch (number) {
    case Err::DiskFull: return "Diskte yer kalmadı";
    case Err::FileNotFound: return "Dosya bulunamadı";
    case Err::PathNotValid: return "Klasör yolu geçerli değil";
    case Err::DatabaseExists: return "Bu adda bir dosya zaten var";
    case Err::CannotOpen: return failed(action) + ", izin yok ya da dosya başka bir programda açık";
    default: return failed(action);
    }
}

} // namespace

std::string pathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

void throwIoError(Err number, IoAction action, const std::filesystem::path& path, const std::string& reason) {
    std::string message = sentence(number, action);
    if (!reason.empty()) message += " (sistemin bildirdiği neden: " + reason + ")";
    Error error(number, message + ".");
    error.inFile(pathText(path));
    throw error;
}

} // namespace jet
