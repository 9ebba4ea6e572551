// records/student_list.h — the students of the open level database as a list for a grid: one query, Turkish
// order.
#pragma once

#include "jet/sql/session.h"

#include <QString>
#include <vector>

namespace orvan {

struct StudentListRow {
    QString number;         // Kütük No
    int registrationNo = 0; // Kayıt No
    QString name, surname;
    QString professionCode, profession; // the name is empty when the code has none
    QString className;
    QString stage; // Ogr_Seviye
    QString identityNo, workplace;
    QString sex; // "E", "K"; empty when unknown
    QString address, master,
        coordinator;            // of the workplace; its master-instructor and the teacher who visits
    QString workStart, workEnd; // there; as texts
};

// "32 öğrenci: 12 kız, 20 erkek"; whose sex is unknown is in the first number only.
QString studentCounts(const std::vector<QString>& sexes);

enum class StudentOrder { ByName, BySurname, ByNumber };

std::vector<StudentListRow> studentList(jet::SqlSession& level, StudentOrder order = StudentOrder::ByName);

} // namespace orvan
