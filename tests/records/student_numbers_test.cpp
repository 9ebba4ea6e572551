// How the next registration and student numbers follow from the rows that are there.
#include "records/student_numbers.h"

#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::TestCentre;

namespace {

struct NumbersTest : testing::Test {
    TestCentre centre;
    void SetUp() override { centre.databases.connect(); }
};

TEST_F(NumbersTest, StudentNumberOfAProfession) {
    struct Case {
        const char* code;
        std::vector<const char*> present;
        int serialLength;
        const char* next;
    };
    const Case cases[] = {
        {"1101", {}, 0, "110100001"},
        {"1102", {"11020099"}, 0, "11020100"},
        {"1103", {"11030099", "11030100"}, 0, "11030101"},
        {"1104", {"1104999"}, 0, "11041000"},      // three digits overflow: the number grows
        {"1105", {"1105007"}, 0, "1105008"},       // width of the last number is kept
        {"1106", {"1106ABC"}, 0, "110600001"},     // not numeric: begins anew
        {"1107", {"110700000"}, 0, "110700001"},   // a serial of 0
        {"1108", {" 110800041 "}, 0, "110800042"}, // blanks round the stored number
        {"1109", {"11090099"}, 5, "110900100"},    // configured length pads
        {"1110", {"1110000099"}, 5, "1110000100"}, // and never shortens
        {"1111", {"1111"}, 0, "111100001"},        // nothing after the code
        {"1112", {"111200009", "111200010"}, 0, "111200011"},
        {"A'12", {"A'1200005"}, 0, "A'1200006"}, // apostrophe in a code
        {"12", {}, 0, "001200001"},              // short codes are filled to four characters
    };
    int registration = 0;
    for (const Case& c : cases) {
        for (const char* number : c.present)
            centre.addStudent(number, ++registration, c.code);
        EXPECT_EQ(nextStudentNo(centre.level(), c.code, {c.serialLength}).toStdString(), c.next);
    }
}

TEST_F(NumbersTest, OtherProfessionsDoNotCount) {
    centre.addStudent("110100500", 1, "1101");
    EXPECT_EQ(nextStudentNo(centre.level(), "1102"), "110200001");
}

// Codes of five characters share the first four; a student may keep his number in another profession.
TEST_F(NumbersTest, NumbersHeldInAnotherProfessionArePassedOver) {
    centre.addStudent("110100001", 1, "11011");
    centre.addStudent("  110100002", 2, "11013");
    EXPECT_EQ(nextStudentNo(centre.level(), "11012"), "110100003");
    centre.addStudent("01100001", 3, "0110");
    EXPECT_EQ(nextStudentNo(centre.level(), "110"), "011000001") << "another width is another number";
    centre.addStudent("150000001", 4, "1600");
    centre.addStudent("150000002", 5, "1600");
    EXPECT_EQ(nextStudentNo(centre.level(), "1500"), "150000003");
}

TEST_F(NumbersTest, RegistrationNumberIsTheHighestPlusOne) {
    EXPECT_EQ(nextRegistrationNo(centre.level()), 1);
    centre.addStudent("110100001", 7, "1101");
    centre.addStudent("110100002", 12, "1101");
    centre.addStudent("110100003", 9, "1101");
    EXPECT_EQ(nextRegistrationNo(centre.level()), 13);
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Kayit_No = NULL");
    EXPECT_EQ(nextRegistrationNo(centre.level()), 1);
    const StudentNumbers numbers = nextNumbers(centre.level(), "1101");
    EXPECT_EQ(numbers.registrationNo, 1);
    EXPECT_EQ(numbers.studentNo, "110100004");
}

TEST_F(NumbersTest, ConfiguredLengthComesFromTheSchoolConstants) {
    EXPECT_EQ(numberingOptions(centre.constants()).serialLength, 0);
    centre.constants().execute("INSERT INTO SabitBilgiler (SB_Okul_Adi) VALUES ('X')");
    EXPECT_EQ(numberingOptions(centre.constants()).serialLength, 0);
    centre.constants().execute("UPDATE SabitBilgiler SET KutukHane = 6");
    EXPECT_EQ(numberingOptions(centre.constants()).serialLength, 6);
    centre.constants().execute("UPDATE SabitBilgiler SET KutukHane = -3");
    EXPECT_EQ(numberingOptions(centre.constants()).serialLength, 0);
}

} // namespace
