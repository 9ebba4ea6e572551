// fuzz/hostile_file.h: the footer is three lengths and a mark.
#include "hostile_file.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace fuzz {

namespace {
constexpr char kMark[4] = {'P', 'A', 'R', 'T'};
constexpr size_t kFooter = 16; // u32 length of journal, lock file and steps; mark
} // namespace

HostileFile split(std::span<const uint8_t> input) {
    HostileFile parts;
    if (input.size() >= kFooter && std::memcmp(input.data() + input.size() - 4, kMark, 4) == 0) {
        uint32_t lengths[3];
        input = input.first(input.size() - 4);
        std::memcpy(lengths, input.data() + input.size() - sizeof lengths, sizeof lengths);
        input = input.first(input.size() - sizeof lengths);
        size_t i = 3;
        for (Bytes* part : {&parts.steps, &parts.lock, &parts.journal}) {
            const size_t length = std::min<size_t>(lengths[--i], input.size());
            const auto bytes = input.last(length);
            part->assign(bytes.begin(), bytes.end());
            input = input.first(input.size() - length);
        }
    }
    parts.file.assign(input.begin(), input.end());
    return parts;
}

Bytes join(const HostileFile& parts) {
    Bytes input = parts.file;
    if (parts.journal.empty() && parts.lock.empty() && parts.steps.empty()) return input;
    uint32_t lengths[3];
    size_t i = 0;
    for (const Bytes* part : {&parts.journal, &parts.lock, &parts.steps}) {
        input.insert(input.end(), part->begin(), part->end());
        lengths[i++] = static_cast<uint32_t>(part->size());
    }
    const auto* raw = reinterpret_cast<const uint8_t*>(lengths);
    input.insert(input.end(), raw, raw + sizeof lengths);
    input.insert(input.end(), std::begin(kMark), std::end(kMark));
    return input;
}

std::shared_ptr<jet::MemoryIo> putInMemory(const HostileFile& parts) {
    auto io = std::make_shared<jet::MemoryIo>();
    io->put(kPath, parts.file);
    if (!parts.journal.empty()) io->put(std::string(kPath) + "-journal", parts.journal);
    if (!parts.lock.empty()) io->put("/fuzz.ldb", parts.lock);
    return io;
}

jet::OpenOptions openOptions(std::shared_ptr<jet::MemoryIo> io) {
    jet::OpenOptions options;
    options.io = std::move(io);
    options.ignorePassword = true;
    options.pages.cacheBytes = 16 * 4096;
    options.pages.lockTimeoutMs = 100;
    return options;
}

std::vector<std::string> allTables(jet::Database& database) {
    std::vector<std::string> names;
    refusable([&] { names = database.tableNames(jet::TableKinds::All); });
    return names;
}

void require(bool promise, const char* text) {
    if (promise) return;
    std::fprintf(stderr, "broken promise: %s\n", text);
    std::abort();
}

} // namespace fuzz
