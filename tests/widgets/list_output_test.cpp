// A list as files: .xlsx and .csv hold what is shown with its types; the PDF has every page and selectable
// Turkish text.
#include "jet/error.h"
#include "support/keyboard.h"
#include "widgets/list_export.h"
#include "widgets/list_print.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace orvan {
namespace {

ListSheet sample() {
    ListSheet sheet;
    sheet.title = "Öğrenci Listesi";
    sheet.notes = {"Şirinevler MEM"};
    sheet.columns = {{"no", "Kütük No", ListKind::Text, 10},
                     {"ad", "Adı", ListKind::Text, 20},
                     {"gun", "Gün", ListKind::Number, 5},
                     {"ucret", "Ücret", ListKind::Money, 10},
                     {"tarih", "Giriş", ListKind::Date, 10}};
    sheet.rows = {{"010100001", "İnci \"Şule\"; Ğ", 12, 1234.5, "05.09.2008"},
                  {"010100002", "Işık", QVariant(), QVariant(), "belirsiz"}};
    return sheet;
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QString unzipped(const QString& path, const QString& member) {
    QProcess unzip;
    unzip.start("unzip", {"-p", path, member});
    EXPECT_TRUE(unzip.waitForFinished());
    return QString::fromUtf8(unzip.readAllStandardOutput());
}

TEST(ListExport, CsvHasShownTextsQuotedWhereNeeded) {
    QTemporaryDir folder;
    const QString path = folder.filePath("liste.csv");
    writeCsv(sample(), path);
    EXPECT_EQ(QString::fromUtf8(contentOf(path)),
              QString("\uFEFFKütük No;Adı;Gün;Ücret;Giriş\r\n"
                      "010100001;\"İnci \"\"Şule\"\"; Ğ\";12;1.234,50;05.09.2008\r\n"
                      "010100002;Işık;;;belirsiz\r\n"));
}

TEST(ListExport, XlsxKeepsCodesAsTextAndNumbersAndDatesAsValues) {
#ifdef Q_OS_WIN
    GTEST_SKIP() << "there is no unzip on this system";
#endif
    QTemporaryDir folder;
    const QString path = folder.filePath("öğrenci listesi.xlsx");
    writeXlsx(sample(), path);
    writeXlsx(sample(), path); // replaces
    const QString texts = unzipped(path, "xl/sharedStrings.xml");
    for (const char* text :
         {"Öğrenci Listesi", "Şirinevler MEM", "010100001", "İnci \"Şule\"; Ğ", "belirsiz"})
        EXPECT_TRUE(texts.contains(QString::fromUtf8(text).toHtmlEscaped()) || texts.contains(text)) << text;
    const QString cells = unzipped(path, "xl/worksheets/sheet1.xml");
    const struct {
        const char* cell;
        const char* value;
    } numbers[] = {
        {"C4", "12"}, {"D4", "1234.5"}, {"E4", "39696"}}; // 05.09.2008 is day 39696 of spreadsheets
    for (const auto& one : numbers) {
        const QRegularExpression cell(QString(R"(<c r="%1"[^>]*><v>%2</v>)").arg(one.cell, one.value));
        EXPECT_TRUE(cell.match(cells).hasMatch()) << one.cell << "\n" << cells.toStdString();
    }
    EXPECT_TRUE(cells.contains("<autoFilter ref=\"A3:E5\"/>"));
    EXPECT_FALSE(QFile::exists(path + ".yeni"));
}

TEST(ListExport, AFolderThatIsNotThereIsAnErrorThatNamesTheFile) {
    using Write = void (*)(const ListSheet&, const QString&);
    const std::string path = QDir::toNativeSeparators("/yok/böyle/liste").toStdString();
    for (const Write write : {Write(writeXlsx), Write(writeCsv), Write(writePdf)}) {
        try {
            write(sample(), "/yok/böyle/liste");
            ADD_FAILURE() << "no error";
        } catch (const jet::Error& error) {
            EXPECT_EQ(error.number(), jet::Err::DiskIO);
            EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
        }
    }
}

TEST(ListExport, TabsAndLineEndsInsideCellsBecomeBlanks) {
    EXPECT_EQ(tabSeparated({{"a\tb", "c\r\nd"}, {"e"}}), QString("a b\tc d\ne\n"));
}

TEST(ListPrint, PdfHasAllPagesAndTurkishLettersCanBeCopied) {
    QTemporaryDir folder;
    ListSheet sheet = sample();
    for (int row = 0; row < 150; ++row)
        sheet.rows.push_back({QString::number(row), "Şükrü Öz İğneci", row, 1.5, ""});
    const QString path = folder.filePath("liste.pdf");
    writePdf(sheet, path);
    const QByteArray pdf = contentOf(path);
    const auto pages = pdf.count("/Type /Page\n");
    EXPECT_GE(pages, 2);
    EXPECT_LE(pages, 4);
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 595")) << "A4 upright";
    EXPECT_TRUE(pdf.contains("/ToUnicode"));
    for (const char* letter : {"<0130>", "<015e>", "<011f>"}) // in the font's table back to letters: İ Ş ğ
        EXPECT_TRUE(pdf.toLower().contains(letter)) << letter;
}

TEST(ListPrint, AWideListTurnsThePage) {
    QPrinter printer;
    ListSheet sheet = sample();
    choosePage(sheet, printer);
    EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Portrait);
    for (int i = 0; i < 6; ++i) {
        sheet.columns.push_back({"x", "Uzun bir sütun başlığı", ListKind::Text, 20});
        for (ListRow& row : sheet.rows)
            row.push_back("uzunca bir hücre metni");
    }
    choosePage(sheet, printer);
    EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
}

} // namespace
} // namespace orvan
