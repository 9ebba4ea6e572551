// reference/ready_data.cpp — see ready_data.h. One line per course; each year of a profession comes to 8 to
// 12 hours a week together with the courses that all professions have.
#include "reference/ready_data.h"

namespace orvan {
namespace {

constexpr ReadyCourse kGeneral[] = {
    {"TRK", "TÜRKÇE", "TÜRKÇE", "220/00", "", '0'},
    {"TDE", "TÜRK DİLİ VE EDEBİYATI", "T.D.EDB.", "", "2222/00", '0'},
    {"MAT", "MATEMATİK", "MAT.", "110/00", "2200/00", '0'},
    {"DİN", "DİN KÜLTÜRÜ VE AHLAK BİLGİSİ", "DİN KÜLT.", "111/00", "1111/00", '0'},
    {"TAR", "TARİH", "TARİH", "", "1100/00", '0'},
    {"İNK", "T.C. İNKILAP TARİHİ VE ATATÜRKÇÜLÜK", "İNK.TAR.", "100/00", "0020/00", '0'},
};

constexpr ReadyCourse kCommon[] = {
    {"İSG", "İŞ SAĞLIĞI VE GÜVENLİĞİ", "İSG", "100/10", "1000/10", '1'},
    {"MSG", "MESLEKİ GELİŞİM ATÖLYESİ", "MES.GEL.", "", "1000/00", '0'},
    {"İŞL", "İŞLETME BİLGİSİ", "İŞL.BİL.", "", "", '2'},
    {"MLY", "MALİYET VE TEKLİF HESABI", "MALİYET", "", "", '2'},
    {"İHU", "İŞ HUKUKU", "İŞ HUK.", "", "", '1'},
};

constexpr ReadyCourse kCarMechanics[] = {
    {"1", "MOTOR TEKNOLOJİSİNE GİRİŞ", "MOTOR GİR.", "200/40", "2000/40", '0'},
    {"2", "OTOMOTİV MOTOR MEKANİĞİ", "MOT.MEK.", "020/30", "0200/30", '0'},
    {"3", "HAREKET İLETİM VE FREN SİSTEMLERİ", "HAR.İLET.", "020/03", "0220/20", '0'},
    {"4", "YAKIT VE ATEŞLEME SİSTEMLERİ", "YAKIT-ATEŞ.", "003/03", "0033/05", '0'},
    {"5", "OTOMOTİV ARIZA TESPİTİ", "ARIZA T.", "004/02", "0004/05", '0'},
    {"6", "İLERİ MOTOR YÖNETİM SİSTEMLERİ", "MOT.YÖN.", "", "", '4'},
};
constexpr ReadyCourse kCarElectrics[] = {
    {"1", "TEMEL ELEKTRİK VE ELEKTRONİK", "TEM.ELK.", "200/40", "2000/40", '0'},
    {"2", "ŞARJ VE MARŞ SİSTEMLERİ", "ŞARJ-MARŞ", "020/30", "0200/30", '0'},
    {"3", "AYDINLATMA VE İKAZ SİSTEMLERİ", "AYDINLATMA", "020/03", "0220/20", '0'},
    {"4", "ARAÇ ELEKTRONİĞİ", "ARAÇ ELKT.", "003/03", "0033/05", '0'},
    {"5", "OTOMOTİV ELEKTRİK ARIZALARI", "ELK.ARIZA", "004/02", "0004/05", '0'},
    {"6", "HİBRİT VE ELEKTRİKLİ ARAÇLAR", "HİBRİT", "", "", '4'},
};
constexpr ReadyCourse kCarPaint[] = {
    {"1", "YÜZEY HAZIRLAMA", "YÜZEY HAZ.", "200/40", "2000/40", '0'},
    {"2", "MACUN VE ASTAR UYGULAMALARI", "MACUN-AST.", "020/30", "0200/30", '0'},
    {"3", "RENK BİLGİSİ VE BOYA KARIŞIMI", "RENK BİL.", "020/03", "0220/20", '0'},
    {"4", "BOYA UYGULAMALARI", "BOYA UYG.", "004/05", "0034/06", '0'},
    {"5", "PASTA, CİLA VE SON KAT", "PASTA-CİLA", "003/00", "0003/04", '0'},
    {"6", "BOYAHANE YÖNETİMİ", "BOYAHANE", "", "", '4'},
};
constexpr ReadyCourse kCarBody[] = {
    {"1", "EL VE TEZGÂH İŞLERİ", "EL İŞL.", "200/40", "2000/40", '0'},
    {"2", "OTOMOTİV GÖVDE PARÇALARI", "GÖVDE PAR.", "020/30", "0200/30", '0'},
    {"3", "GAZALTI VE PUNTA KAYNAĞI", "KAYNAK", "020/03", "0220/20", '0'},
    {"4", "SAC DÜZELTME VE ÇEKTİRME", "SAC DÜZ.", "004/05", "0034/06", '0'},
    {"5", "ŞASİ ÖLÇÜM VE DOĞRULTMA", "ŞASİ", "003/00", "0003/04", '0'},
    {"6", "HASAR TESPİTİ VE RAPORLAMA", "HASAR T.", "", "", '4'},
};
constexpr ReadyCourse kElectrician[] = {
    {"1", "TEMEL ELEKTRİK", "TEM.ELK.", "200/40", "2000/40", '0'},
    {"2", "ELEKTRİK TESİSAT PLANLARI", "TES.PLAN", "020/30", "0200/30", '0'},
    {"3", "AYDINLATMA VE PRİZ TESİSATI", "AYD.TES.", "020/03", "0220/20", '0'},
    {"4", "KUVVET VE KUMANDA TESİSATI", "KUVVET T.", "003/03", "0033/05", '0'},
    {"5", "ZAYIF AKIM VE TOPRAKLAMA", "ZAY.AKIM", "004/02", "0004/05", '0'},
    {"6", "PANO TASARIMI VE TEST", "PANO", "", "", '4'},
};
constexpr ReadyCourse kCooling[] = {
    {"1", "SOĞUTMANIN TEMELLERİ", "SOĞ.TEM.", "200/40", "2000/40", '0'},
    {"2", "BORU VE LEHİM İŞLERİ", "BORU-LEH.", "020/30", "0200/30", '0'},
    {"3", "SOĞUTUCU AKIŞKANLAR", "AKIŞKAN", "020/03", "0220/20", '0'},
    {"4", "İKLİMLENDİRME CİHAZLARI", "İKLİMLEN.", "003/03", "0033/05", '0'},
    {"5", "SOĞUTMA ARIZALARI VE BAKIM", "ARIZA-BAK.", "004/02", "0004/05", '0'},
    {"6", "SOĞUK ODA VE SANTRAL SİSTEMLERİ", "SOĞUK ODA", "", "", '4'},
};
constexpr ReadyCourse kPlumbing[] = {
    {"1", "TESİSAT TEKNOLOJİSİ", "TES.TEK.", "200/40", "2000/40", '0'},
    {"2", "TEMİZ VE PİS SU TESİSATI", "SU TES.", "020/30", "0200/30", '0'},
    {"3", "VİTRİFİYE MONTAJI", "VİTRİFİYE", "020/03", "0220/20", '0'},
    {"4", "KALORİFER VE KAZAN TESİSATI", "KALORİFER", "003/03", "0033/05", '0'},
    {"5", "DOĞAL GAZ İÇ TESİSATI", "DOĞAL GAZ", "004/02", "0004/05", '0'},
    {"6", "MEKANİK TESİSAT PROJESİ", "TES.PROJE", "", "", '4'},
};
constexpr ReadyCourse kFurniture[] = {
    {"1", "AĞAÇ TEKNOLOJİSİ", "AĞAÇ TEK.", "200/40", "2000/50", '0'},
    {"2", "MOBİLYA RESMİ", "MOB.RES.", "020/20", "0220/30", '0'},
    {"3", "KUTU MOBİLYA ÜRETİMİ", "KUTU MOB.", "020/13", "0230/13", '0'},
    {"4", "MASİF MOBİLYA VE BİRLEŞTİRMELER", "MASİF MOB.", "004/03", "0004/05", '0'},
    {"5", "ÜST YÜZEY İŞLEMLERİ", "ÜST YÜZEY", "003/02", "0003/02", '0'},
    {"6", "CNC VE İÇ MEKÂN TASARIMI", "CNC-TAS.", "", "", '4'},
};
constexpr ReadyCourse kHairdresser[] = {
    {"1", "SAÇ VE DERİ BİLGİSİ", "SAÇ BİL.", "200/40", "2000/40", '0'},
    {"2", "SAÇ YIKAMA VE BAKIM", "SAÇ BAK.", "010/20", "0200/30", '0'},
    {"3", "SAÇ KESİMİ", "SAÇ KES.", "022/13", "0230/23", '0'},
    {"4", "SAÇ RENKLENDİRME", "RENKLEND.", "013/03", "0024/03", '0'},
    {"5", "PERMA, FÖN VE TOPUZ", "FÖN-TOPUZ", "002/02", "0003/04", '0'},
    {"6", "ÖZEL GÜN SAÇI VE SALON YÖNETİMİ", "SALON YÖN.", "", "", '4'},
};
constexpr ReadyCourse kBarber[] = {
    {"1", "BERBERLİĞE GİRİŞ VE HİJYEN", "HİJYEN", "200/40", "2000/40", '0'},
    {"2", "SAÇ VE CİLT BAKIMI", "CİLT BAK.", "020/20", "0200/30", '0'},
    {"3", "ERKEK SAÇ KESİMİ", "SAÇ KES.", "022/13", "0230/23", '0'},
    {"4", "SAKAL VE BIYIK TIRAŞI", "TIRAŞ", "003/03", "0024/03", '0'},
    {"5", "SAÇ BOYAMA VE ŞEKİLLENDİRME", "BOYA-ŞEKİL", "002/02", "0003/04", '0'},
    {"6", "BERBER SALONU YÖNETİMİ", "SALON YÖN.", "", "", '4'},
};
constexpr ReadyCourse kCook[] = {
    {"1", "MUTFAK BİLGİSİ VE HİJYEN", "MUTFAK", "200/40", "2000/40", '0'},
    {"2", "BESLENME İLKELERİ", "BESLENME", "020/10", "0200/30", '0'},
    {"3", "TÜRK MUTFAĞI", "TÜRK MUT.", "023/23", "0230/23", '0'},
    {"4", "ÇORBA, SOS VE SICAK YEMEKLER", "SICAK YEM.", "002/03", "0024/04", '0'},
    {"5", "SOĞUK MEZE VE SALATALAR", "SOĞUK MEZE", "002/02", "0003/03", '0'},
    {"6", "MÖNÜ PLANLAMA VE DÜNYA MUTFAKLARI", "MÖNÜ", "", "", '4'},
};
constexpr ReadyCourse kPastry[] = {
    {"1", "PASTACILIK BİLGİSİ VE HİJYEN", "PASTA BİL.", "200/40", "2000/40", '0'},
    {"2", "TEMEL HAMUR İŞLERİ", "HAMUR İŞL.", "020/20", "0200/30", '0'},
    {"3", "KREMA VE DOLGULAR", "KREMA", "020/13", "0220/23", '0'},
    {"4", "YAŞ PASTA VE SÜSLEME", "YAŞ PASTA", "004/03", "0034/03", '0'},
    {"5", "ŞEKERLEME VE ÇİKOLATA", "ÇİKOLATA", "003/02", "0003/04", '0'},
    {"6", "PASTANE ÜRETİM PLANLAMASI", "ÜRETİM PL.", "", "", '4'},
};
constexpr ReadyCourse kTailorWomen[] = {
    {"1", "DİKİŞE HAZIRLIK", "DİKİŞ HAZ.", "200/40", "2000/40", '0'},
    {"2", "TEMEL DİKİŞ TEKNİKLERİ", "TEM.DİKİŞ", "020/20", "0200/30", '0'},
    {"3", "KADIN GİYSİ KALIPLARI", "KALIP", "022/13", "0230/23", '0'},
    {"4", "ETEK, BLUZ VE ELBİSE DİKİMİ", "ELBİSE", "003/03", "0023/03", '0'},
    {"5", "CEKET VE MANTO DİKİMİ", "CEKET", "002/02", "0004/04", '0'},
    {"6", "ABİYE GİYİM VE DRAPAJ", "ABİYE", "", "", '4'},
};
constexpr ReadyCourse kTailorMen[] = {
    {"1", "DİKİŞE HAZIRLIK", "DİKİŞ HAZ.", "200/40", "2000/40", '0'},
    {"2", "TEMEL DİKİŞ TEKNİKLERİ", "TEM.DİKİŞ", "020/20", "0200/30", '0'},
    {"3", "ERKEK GİYSİ KALIPLARI", "KALIP", "022/13", "0230/23", '0'},
    {"4", "PANTOLON VE YELEK DİKİMİ", "PANTOLON", "003/03", "0023/03", '0'},
    {"5", "ERKEK CEKETİ DİKİMİ", "CEKET", "002/02", "0004/04", '0'},
    {"6", "ISMARLAMA GİYİM VE PROVA", "ISMARLAMA", "", "", '4'},
};
constexpr ReadyCourse kWelding[] = {
    {"1", "TEMEL METAL ŞEKİLLENDİRME", "METAL ŞEK.", "200/40", "2000/40", '0'},
    {"2", "TEKNİK RESİM", "TEK.RES.", "011/20", "0110/20", '0'},
    {"3", "ELEKTRİK ARK KAYNAĞI", "ARK KAY.", "022/13", "0230/23", '0'},
    {"4", "GAZALTI (MIG-MAG) KAYNAĞI", "GAZALTI", "012/03", "0114/13", '0'},
    {"5", "TIG VE OKSİGAZ KAYNAĞI", "TIG-OKS.", "002/02", "0003/04", '0'},
    {"6", "KAYNAK KONTROLÜ VE STANDARTLARI", "KAY.KONT.", "", "", '4'},
};
constexpr ReadyCourse kSteel[] = {
    {"1", "TEMEL METAL ŞEKİLLENDİRME", "METAL ŞEK.", "200/40", "2000/40", '0'},
    {"2", "TEKNİK RESİM VE AÇINIM", "AÇINIM", "020/20", "0220/30", '0'},
    {"3", "PROFİL VE SAC İŞLERİ", "PROFİL-SAC", "020/13", "0230/23", '0'},
    {"4", "ÇELİK ÇATI VE TAŞIYICILAR", "ÇELİK ÇATI", "004/03", "0004/05", '0'},
    {"5", "MONTAJ VE KALDIRMA", "MONTAJ", "003/02", "0003/02", '0'},
    {"6", "KONSTRÜKSİYON PROJE OKUMA", "PROJE OK.", "", "", '4'},
};
constexpr ReadyCourse kComputer[] = {
    {"1", "BİLGİSAYAR DONANIMI", "DONANIM", "200/40", "2000/40", '0'},
    {"2", "TEMEL ELEKTRONİK VE ÖLÇME", "TEM.ELK.", "020/30", "0200/30", '0'},
    {"3", "İŞLETİM SİSTEMLERİ", "İŞL.SİS.", "020/03", "0220/20", '0'},
    {"4", "AĞ TEMELLERİ VE KABLOLAMA", "AĞ TEM.", "003/03", "0033/05", '0'},
    {"5", "ARIZA TESPİTİ VE ONARIM", "ARIZA-ON.", "004/02", "0004/05", '0'},
    {"6", "SUNUCU VE GÜVENLİK YÖNETİMİ", "SUNUCU", "", "", '4'},
};

constexpr ReadyMainProfession kMainProfessions[] = {
    {"1100", "Motorlu Araçlar Teknolojisi"},
    {"1200", "Elektrik-Elektronik Teknolojisi"},
    {"1250", "Tesisat Teknolojisi ve İklimlendirme"},
    {"1300", "Mobilya ve İç Mekân Tasarımı"},
    {"1400", "Güzellik ve Saç Bakım Hizmetleri"},
    {"1500", "Yiyecek İçecek Hizmetleri"},
    {"1600", "Moda Tasarım Teknolojileri"},
    {"1700", "Metal Teknolojisi"},
    {"1800", "Bilişim Teknolojileri"},
};

constexpr ReadyProfession kProfessions[] = {
    {"1101", "Otomotiv Mekanikerliği", "OTO MEK.", kCarMechanics},
    {"1102", "Otomotiv Elektrikçiliği", "OTO ELK.", kCarElectrics},
    {"1103", "Otomotiv Boyacılığı", "OTO BOYA", kCarPaint},
    {"1104", "Otomotiv Gövdeciliği (Kaporta)", "KAPORTA", kCarBody},
    {"1201", "Elektrik Tesisatçılığı", "ELK.TES.", kElectrician},
    {"1202", "Soğutma ve İklimlendirme", "SOĞUTMA", kCooling},
    {"1203", "Sıhhi Tesisatçılık", "SIHHİ TES.", kPlumbing},
    {"1301", "Mobilyacılık", "MOBİLYA", kFurniture},
    {"1401", "Kuaförlük", "KUAFÖR", kHairdresser},
    {"1402", "Erkek Berberliği", "BERBER", kBarber},
    {"1501", "Aşçılık", "AŞÇI", kCook},
    {"1502", "Pastacılık ve Şekerlemecilik", "PASTACI", kPastry},
    {"1601", "Kadın Giyim Terziliği", "KADIN TERZ.", kTailorWomen},
    {"1602", "Erkek Giyim Terziliği", "ERKEK TERZ.", kTailorMen},
    {"1701", "Kaynakçılık", "KAYNAKÇI", kWelding},
    {"1702", "Çelik Konstrüksiyon", "ÇELİK KON.", kSteel},
    {"1801", "Bilgisayar Teknik Servisi", "BİLG.SRV.", kComputer},
};

} // namespace

std::span<const ReadyMainProfession> readyMainProfessions() { return kMainProfessions; }
std::span<const ReadyProfession> readyProfessions() { return kProfessions; }
std::span<const ReadyCourse> readyGeneralCourses() { return kGeneral; }
std::span<const ReadyCourse> readyCommonCourses() { return kCommon; }

} // namespace orvan
