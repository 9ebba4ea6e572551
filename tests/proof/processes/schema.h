// schema.h — the tables that the workers fight over, and what every row of them must look like.
#pragma once

#include "jet/database.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace proof {

// Hesap(Id, Bakiye): accounts. Transfers keep the sum.
inline constexpr int kAccounts = 24, kOpening = 1000;
// Sayac(Id, Deger): counters that everybody increments.
inline constexpr int kCounters = 3;
// Damga(Id, Deger): each worker's own row; it grows, and the board tells the last acknowledged value.
// Kayit(No, Kimlik, Surum, Ad, Aciklama): records. No is unique and from a range that all share; Kimlik is
// unique for ever; Ad and Aciklama follow from Kimlik and Surum alone.
inline constexpr int kRecordKeys = 400;
// Yigin(Parti, Sira, Metin): batches, each with batchRows(Parti) rows or none.
// Degisen(Id, Metin): its fields and indexes come and go. Gecici<worker>: comes and goes.

std::string nameOf(int32_t id, int32_t version); // 1..40 characters
std::string noteOf(int32_t id, int32_t version); // carries a checksum of itself; 30..9000 characters
bool isWholeNote(const std::string& note);
int batchRows(int32_t batch);

void createDatabase(const std::filesystem::path& file, int workers);

} // namespace proof
