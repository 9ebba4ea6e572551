// jet/error.h — the one error type of the engine: a DAO error number, a Turkish text and the place in the
// file. Every layer throws jet::Error for what a user, a disk or a damaged file can cause; asserts are for
// our own mistakes.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace jet {

// DAO's numbers; the rules of the program test them, so they are never renumbered.
enum class Err : int {
    Overflow = 6,        // of a number, in an expression
    DivisionByZero = 11, // in an expression
    NoCurrentRecord = 3021,
    UpdateWithoutEdit = 3020,
    DuplicateKey = 3022,
    FileNotFound = 3024,
    DiskFull = 3026,
    ReadOnly = 3027,
    InvalidPassword = 3031,
    ObjectExists = 3012,
    TableExists = 3010,
    OlderFormat =
        3041, // the encoders were asked for a Jet 3 form; files of it are refused earlier, with ReadOnly
    PathNotValid = 3044,
    FileInUse = 3045,
    RecordTooLarge = 3047,
    Corrupt = 3049, // damaged page, chain, map, definition or row
    LockFailed = 3050,
    CannotOpen = 3051,   // no permission, or opened exclusively by another
    IndexNullKey = 3058, // null in a primary key
    TooFewParameters = 3061,
    Syntax = 3075,
    TypeMismatchInQuery = 3464,
    AmbiguousName = 3079, // a field that more than one table of the query has
    NoSuchFunction = 3085,
    NoSuchTable = 3078,
    FieldTooLong = 3163,
    InvalidArgument = 3001,
    TooManyFields = 3190,
    FieldDefinedTwice = 3191,
    TooManyIndexes = 3626,
    DataChanged = 3197, // another user changed the record since Edit
    DatabaseExists = 3204,
    LockedByOther = 3260,
    NoSuchItem = 3265, // field or index
    PrimaryKeyExists = 3283,
    IndexExists = 3284,
    NameTooLong = 3125,
    RequiredNull = 3314,
    ZeroLength = 3315,
    NotADatabase = 3343,
    NewerFormat = 3847,
    Conversion = 3421, // value cannot become the field's type
    DiskIO = 3043, // disk or network error while reading or writing; also the 2 GB limit (with its own text)
};

class Error : public std::runtime_error {
  public:
    // `message` is a whole Turkish sentence without place; the place is added by the layers that know it.
    Error(Err number, const std::string& message)
        : std::runtime_error(message), number_(number), message_(message) {}

    Err number() const { return number_; }
    int code() const { return static_cast<int>(number_); }
    const std::string& message() const { return message_; } // without place
    const std::string& path() const { return path_; }       // file; empty when not known
    const std::string& table() const { return table_; }     // table; empty when not known
    uint32_t page() const { return page_; }                 // page number; 0 when not known

    // Each adds its part of the place once: what is set already stays (the innermost layer knows best).
    Error& inFile(std::string_view path);
    Error& inTable(std::string_view table);
    Error& onPage(uint32_t page);

    // "message (dosya …, tablo …, sayfa …)" — for people.
    const char* what() const noexcept override {
        return full_.empty() ? std::runtime_error::what() : full_.c_str();
    }

  private:
    void rebuild();
    Err number_;
    std::string message_, path_, table_, full_;
    uint32_t page_ = 0;
};

} // namespace jet
