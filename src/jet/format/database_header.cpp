// jet/format/database_header.h: the first page. Bytes 18..97 lie under a constant mask, the RC4 stream of a
// fixed key; the password under a second one made from the creation date.
#include "jet/format/database_header.h"

#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/row_codec.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace jet {

namespace {

constexpr size_t kSignatureAt = 4, kVersionAt = 0x14, kMaskedAt = 0x18, kMaskedSize = 128;
constexpr size_t kCodePageAt = 0x3C, kEncodingKeyAt = 0x3E, kPasswordAt = 0x42, kPasswordSize = 40;
constexpr size_t kJet3PasswordSize = 20, kJet3LocaleAt = 0x3A;
constexpr size_t kBuildAt = 0x6A, kLocaleAt = 0x6E, kSortVersionAt = 0x71, kCreationAt = 0x72;
constexpr size_t kFormatTextAt = 0x98, kCommitWordsAt = 0xE00;
constexpr double kLastPlausibleDay = 2958466; // the year 10000
constexpr uint16_t kBuild = 8618;             // 4.0.8618, the last one in wide use
constexpr uint8_t kUnusedCommitWord[] = {0x00, 0x01};
constexpr std::string_view kJetSignature{"Standard Jet DB\0", 16}, kAceSignature{"Standard ACE DB\0", 16};
// The six constants at 18: rows 0 and 1 of page 1, definition pages of the four system tables.
constexpr uint32_t kFixedPointers[] = {0x100, 0x101, 2, 3, 4, 5};
constexpr uint8_t kFormatText[] = {0x54, 0x06, 0x00, 0x00, '4', '.', '0'};

class Rc4 {
  public:
    constexpr explicit Rc4(std::array<uint8_t, 4> key) {
        for (size_t i = 0; i < 256; ++i)
            state_[i] = static_cast<uint8_t>(i);
        uint8_t j = 0;
        for (size_t i = 0; i < 256; ++i) {
            j = static_cast<uint8_t>(j + state_[i] + key[i % key.size()]);
            swap(i, j);
        }
    }
    constexpr uint8_t next() {
        ++i_;
        j_ = static_cast<uint8_t>(j_ + state_[i_]);
        swap(i_, j_);
        return state_[static_cast<uint8_t>(state_[i_] + state_[j_])];
    }

  private:
    constexpr void swap(size_t a, size_t b) {
        const uint8_t kept = state_[a];
        state_[a] = state_[b];
        state_[b] = kept;
    }
    std::array<uint8_t, 256> state_{};
    uint8_t i_ = 0, j_ = 0;
};

constexpr auto kHeaderMask = [] {
    std::array<uint8_t, kMaskedSize> mask{};
    Rc4 stream({0xC7, 0xDA, 0x39, 0x6B});
    for (uint8_t& byte : mask)
        byte = stream.next();
    return mask;
}();
static_assert(kHeaderMask[0] == 0xB5 && kHeaderMask[7] == 0x55 && kHeaderMask[127] == 0xD4);

void applyHeaderMask(std::span<uint8_t> page0) {
    for (size_t i = 0; i < kMaskedSize; ++i)
        page0[kMaskedAt + i] ^= kHeaderMask[i];
}

// Mask of the password, repeated every four bytes; 0 for a date that no file has.
uint32_t passwordMask(double creationDate) {
    if (!(std::abs(creationDate) < 2147483648.0)) return 0;
    return static_cast<uint32_t>(static_cast<int32_t>(creationDate));
}

void applyPasswordMask(std::span<uint8_t> password, uint32_t mask) {
    for (size_t i = 0; i + 4 <= password.size(); i += 4)
        put32(password, i, get32(password, i) ^ mask);
}

// The masked 40 bytes of a password; the header mask is not in them yet.
std::array<uint8_t, kPasswordSize> storedPassword(std::string_view password, double creationDate) {
    const std::u16string units = utf16FromUtf8(password);
    std::array<uint8_t, kPasswordSize> stored{};
    if (2 * units.size() > stored.size())
        throw Error(Err::InvalidArgument, "Parola en çok 20 karakter olabilir.");
    std::memcpy(stored.data(), units.data(), 2 * units.size());
    applyPasswordMask(stored, passwordMask(creationDate));
    return stored;
}

std::string readPassword(std::span<const uint8_t> header, double creationDate) {
    std::array<uint8_t, kPasswordSize> stored;
    std::copy_n(header.begin() + kPasswordAt, kPasswordSize, stored.begin());
    applyPasswordMask(stored, passwordMask(creationDate));
    std::u16string units;
    for (size_t i = 0; i < stored.size() && get16(stored, i) != 0; i += 2)
        units += static_cast<char16_t>(get16(stored, i));
    std::string utf8;
    appendUtf8(units, utf8);
    return utf8;
}

std::string readJet3Password(std::span<const uint8_t> header, uint16_t codePage) {
    const auto stored = header.subspan(kPasswordAt, kJet3PasswordSize);
    const auto end = std::find(stored.begin(), stored.end(), 0);
    std::string utf8;
    decodeText(kJet3, codePage, {stored.begin(), end}, utf8);
    return utf8;
}

class Rc4PageCodec : public PageCodec {
  public:
    explicit Rc4PageCodec(uint32_t key) : key_(key) {}
    void decode(PageNo no, std::span<uint8_t> page) const override {
        std::array<uint8_t, 4> key;
        storeLe(key.data(), key_ ^ no);
        Rc4 stream(key);
        for (uint8_t& byte : page)
            byte ^= stream.next();
    }
    void encode(PageNo no, std::span<uint8_t> page) const override { decode(no, page); }

  private:
    uint32_t key_;
};

bool hasSignature(std::span<const uint8_t> bytes, std::string_view signature) {
    return std::equal(signature.begin(), signature.end(), bytes.begin() + kSignatureAt,
                      [](char a, uint8_t b) { return static_cast<uint8_t>(a) == b; });
}

} // namespace

size_t probePageSize(std::span<const uint8_t> firstBytes) {
    if (firstBytes.empty()) throw Error(Err::NotADatabase, "Dosya boş; bir Access veritabanı değil.");
    if (firstBytes.size() <= kVersionAt || firstBytes[0] != PageType::kHeader)
        throw Error(Err::NotADatabase, "Dosya bir Access veritabanı değil.");
    if (hasSignature(firstBytes, kAceSignature))
        throw Error(Err::NewerFormat,
                    "Dosya, Access 2007 ya da sonrasının biçiminde (.accdb); bu sürüm okuyamaz.");
    if (!hasSignature(firstBytes, kJetSignature))
        throw Error(Err::NotADatabase, "Dosya bir Access veritabanı değil.");
    const uint8_t version = firstBytes[kVersionAt];
    if (version > 1)
        throw Error(Err::NewerFormat, "Dosya, bu sürümün okuyamadığı daha yeni bir Access biçiminde.");
    const size_t pageSize = version == 0 ? kJet3.pageSize : kJet4.pageSize;
    if (firstBytes.size() < pageSize) throw Error(Err::Corrupt, "Dosya ilk sayfasının ortasında bitiyor.");
    return pageSize;
}

DatabaseHeader readHeader(std::span<const uint8_t> page0) {
    std::array<uint8_t, kMaskedAt + kMaskedSize> bytes;
    std::copy_n(page0.begin(), bytes.size(), bytes.begin());
    applyHeaderMask(bytes);
    DatabaseHeader header;
    header.layout = bytes[kVersionAt] == 0 ? &kJet3 : &kJet4;
    header.codePage = get16(bytes, kCodePageAt);
    header.encodingKey = get32(bytes, kEncodingKeyAt);
    if (header.layout == &kJet3) {
        header.sortOrder = {get16(bytes, kJet3LocaleAt), 0};
        header.password = readJet3Password(bytes, header.codePage);
        return header;
    }
    header.sortOrder = {get16(bytes, kLocaleAt), bytes[kSortVersionAt]};
    header.creationDate = loadLe<double>(bytes.data() + kCreationAt);
    header.password = readPassword(bytes, header.creationDate);
    return header;
}

bool hasNewerSignature(std::span<const uint8_t> page0) { return hasSignature(page0, kAceSignature); }

// A sound header is the one we would make of what was read from it: the constants are the same in every file,
// and a password is padded with zeros under a mask made from the date.
HeaderTrust judgeHeader(std::span<const uint8_t> page0) {
    DatabaseHeader header = readHeader(page0);
    header.layout = &kJet4;
    Bytes made(kJet4.pageSize);
    initialiseHeader(made, header);
    const auto same = [&](size_t from, size_t to) {
        return std::equal(made.begin() + static_cast<ptrdiff_t>(from),
                          made.begin() + static_cast<ptrdiff_t>(to),
                          page0.begin() + static_cast<ptrdiff_t>(from));
    };
    const bool plausibleDate = header.creationDate > 0 && header.creationDate < kLastPlausibleDay;
    HeaderTrust trust;
    trust.format = same(0, kMaskedAt) && same(kMaskedAt, kMaskedAt + sizeof kFixedPointers) &&
                   same(kFormatTextAt, kFormatTextAt + sizeof kFormatText);
    trust.settings =
        trust.format && header.codePage != 0 && header.sortOrder.lcid != 0 && same(kLocaleAt, kCreationAt);
    trust.password = trust.format && plausibleDate && same(kPasswordAt, kPasswordAt + kPasswordSize);
    return trust;
}

void initialiseHeader(std::span<uint8_t> page0, const DatabaseHeader& header) {
    std::fill(page0.begin(), page0.end(), uint8_t{0});
    page0[1] = 1;
    std::copy(kJetSignature.begin(), kJetSignature.end(), page0.begin() + kSignatureAt);
    page0[kVersionAt] = 1;
    for (size_t i = 0; i < std::size(kFixedPointers); ++i)
        put32(page0, kMaskedAt + 4 * i, kFixedPointers[i]);
    put16(page0, kCodePageAt, header.codePage);
    put32(page0, kEncodingKeyAt, header.encodingKey);
    const auto password = storedPassword(header.password, header.creationDate);
    std::copy(password.begin(), password.end(), page0.begin() + kPasswordAt);
    put16(page0, kBuildAt, kBuild);
    put16(page0, kLocaleAt, header.sortOrder.lcid);
    page0[kSortVersionAt] = header.sortOrder.version;
    storeLe(page0.data() + kCreationAt, header.creationDate);
    applyHeaderMask(page0);
    std::copy(std::begin(kFormatText), std::end(kFormatText), page0.begin() + kFormatTextAt);
    clearUserMarks(page0);
}

void clearUserMarks(std::span<uint8_t> page0) {
    for (size_t at = kCommitWordsAt; at < page0.size(); at += sizeof kUnusedCommitWord)
        std::copy(std::begin(kUnusedCommitWord), std::end(kUnusedCommitWord),
                  page0.begin() + static_cast<ptrdiff_t>(at));
}

void writePassword(std::span<uint8_t> page0, std::string_view password) {
    auto stored = storedPassword(password, readHeader(page0).creationDate);
    for (size_t i = 0; i < stored.size(); ++i)
        page0[kPasswordAt + i] = stored[i] ^ kHeaderMask[kPasswordAt - kMaskedAt + i];
}

std::unique_ptr<PageCodec> makePageCodec(uint32_t encodingKey) {
    return encodingKey == 0 ? nullptr : std::make_unique<Rc4PageCodec>(encodingKey);
}

} // namespace jet
