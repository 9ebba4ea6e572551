// records/bulk_checks.h — what single fields of a student must agree with. Pure: texts in, a sentence out;
// empty when all is well. `student` is the student as he will be.
#pragma once

#include "reference/stored_rows.h"

#include <QDate>

namespace orvan {

QString leavingDateFault(const FieldTexts& student, QDate today);
QString lastPaymentFault(const FieldTexts& student, QDate today);
QString insuranceStartFault(const FieldTexts& student, QDate today);
QString birthDateFault(const FieldTexts& student, QDate today);
QString registryBirthDateFault(const FieldTexts& student, QDate today);
QString identityFault(const FieldTexts& student, QDate today);
QString identityWarning(const FieldTexts& student, QDate today); // check digits
QString lawArticleFault(const FieldTexts& student, QDate today);
QString yearsFault(const FieldTexts& student, QDate today); // Ogr_Isletme1_Yil, whole number
QString monthsFault(const FieldTexts& student, QDate today);
QString daysFault(const FieldTexts& student, QDate today);

inline constexpr auto kNextStage = "+1"; // choice of the stage command: each student's next stage
// The stage that `choice` means for him; the next one is one year higher, the words behind the number stay.
QString stageOf(const FieldTexts& student, const QString& choice, QString& refusal);

} // namespace orvan
