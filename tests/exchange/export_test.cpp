#include <QXmlStreamReader>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <map>

#include "base/dates.h"
#include "exchange/csv_import.h"
#include "exchange/exchange_fixture.h"
#include "exchange/field_text.h"
#include "exchange/write_csv.h"
#include "exchange/write_xml.h"
#include "log/field_names.h"
#include "log/summary_rows.h"
#include "support/file_size_limit.h"

namespace velk {
namespace {

using Rows = std::vector<std::string>;

class Export : public test::ExchangeFixture {
 protected:
  void Record() {
    NameChannels({"Hook load", "A"});
    session.CurrentParameters[1].IncludeInSummary = true;
    StartLog(path);
    session.Data.hasValues = true;
    session.CurrentValue = {0, 1.5F, 0.1F};
    AppendLogRow();
    session.CurrentValue = {0, -2, std::numeric_limits<float>::quiet_NaN()};
    AppendLogRow(clock.Now() + 1);
  }
  std::string Csv(ExportMode mode, const std::vector<int>& fields) {
    const std::string out = folder.File("out.csv");
    LongTask task = Task();
    clock.Advance(400);
    WriteCsv(ExportSource(path, mode), fields, out, task);
    return Read(out);
  }
  std::string Xml() {
    const std::string out = folder.File("out.xml");
    LongTask task = Task();
    WriteXml(ExportSource(path, ExportMode::LogToXml), out, task);
    return Read(out);
  }
};

TEST_F(Export, WritesTheChosenFieldsInTheirOrder) {
  Record();
  log.Finalise();
  EXPECT_EQ(Csv(ExportMode::LogToCsv, {1, 2, 4, 3}),
            "Date,Time,A,Hook load\r\n14-Mar-2026,09:30:00,0.10000000149011612,1.5\r\n15-Mar-2026,09:30:00,,-2\r\n");
  EXPECT_EQ(Csv(ExportMode::LogToCsv, {0}), "ID\r\n1\r\n2\r\n");
}

TEST_F(Export, WritesALogWhileItIsRecorded) {
  Record();
  EXPECT_EQ(Csv(ExportMode::LogToCsv, {0, 3}), "ID,Hook load\r\n1,1.5\r\n2,-2\r\n");
  AppendLogRow(clock.Now() + 2);
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), (Rows{"3"})) << "and the recording ends as ever";
}

TEST_F(Export, WritesRowsByDateAndTime) {
  Record();
  AppendLogRow(clock.Now() - 1);
  log.Finalise();
  EXPECT_EQ(Csv(ExportMode::LogToCsv, {0, 1}), "ID,Date\r\n3,13-Mar-2026\r\n1,14-Mar-2026\r\n2,15-Mar-2026\r\n");
}

TEST_F(Export, WritesNothingButTheNamesOfAnEmptyTable) {
  NameChannels({"A"});
  log.CreateLogFile(path);
  EXPECT_EQ(Csv(ExportMode::LogToCsv, {0, 1, 2, 3}), "ID,Date,Time,A\r\n");
}

TEST_F(Export, WritesTheSummaryReport) {
  Record();
  AppendSummaryRow(log.Writing(), session, log.ChannelsOfLog(), clock.Now(), "Packer set,\nтест");
  log.Finalise();
  EXPECT_EQ(Csv(ExportMode::SummaryToCsv, {0, 1, 2, 3}),
            "Date,Time,Hook load,Comments\r\n14-Mar-2026,09:30:00,-2,Packer set, тест\r\n");
}

TEST_F(Export, GivesBackTheSameBitsByWayOfAFile) {
  NameChannels({"A", "B", "C"});
  StartLog(path);
  const float values[] = {0.1F, 1e-38F, 3.4028235e38F, 16777217.0F, -1.0F / 3.0F, 0.0F, 5e-45F, 123456.79F};
  for (int i = 0; i < 6; ++i) {
    session.CurrentValue = {0, values[i], values[i + 1], values[i + 2]};
    AppendLogRow(clock.Now() + i / 86400.0);
  }
  log.Finalise();
  Csv(ExportMode::LogToCsv, {1, 2, 3, 4, 5});
  CsvFile file(folder.File("out.csv"), CodePage::Western);
  LongTask task = Task();
  const std::string copy = folder.File("copy.mdb");
  ImportIntoNewLog(file, PlanOf(file.Shape(), file.Shape().ColumnNames), copy, false, test::English(), task);
  LogReader one(path), other(copy);
  const auto rows = one.Page({}, 10), again = other.Page({}, 10);
  ASSERT_EQ(rows.size(), 6U);
  ASSERT_EQ(again.size(), 6U);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].time, again[i].time);
    EXPECT_EQ(std::memcmp(rows[i].values.data(), again[i].values.data(), 3 * sizeof(double)), 0);
  }
}

TEST_F(Export, NumbersReadBackAsTheSameBits) {
  for (const double value : {0.1, 1.0 / 3, 1e300, 5e-324, -0.5, 1e22, 123456789.123}) {
    std::string text;
    AppendNumber(text, value);
    EXPECT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
    EXPECT_EQ(text.find(','), std::string::npos);
  }
}

TEST_F(Export, LeavesWhatStandsWhereItIsCancelled) {
  Record();
  log.Finalise();
  Write("out.csv", "what was there");
  dialogs.cancelProgress = true;
  EXPECT_THROW(Csv(ExportMode::LogToCsv, {0}), TaskCancelled);
  EXPECT_EQ(Read(folder.File("out.csv")), "what was there");
  EXPECT_EQ(FilesInFolder(), (Rows{"out.csv", "run.mdb"}));
}

TEST_F(Export, LeavesNothingHalfWrittenOnAFullDisk) {
  Record();
  log.Finalise();
  {
    const test::FileSizeLimit limit(20);
    ErrorOf([&] { Csv(ExportMode::LogToCsv, {0, 1, 2, 3}); }, ErrorNumber::DiskFull);
  }
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
}

TEST_F(Export, WritesARecordSetWithItsSchema) {
  Record();
  log.Finalise();
  const std::string xml = Xml();
  EXPECT_NE(xml.find("<s:Schema id='RowsetSchema'>"), std::string::npos);
  EXPECT_NE(xml.find("<s:AttributeType name='ID' rs:number='1'"), std::string::npos);
  EXPECT_NE(xml.find("<s:AttributeType name='Hook_x0020_load' rs:name='Hook load' rs:number='4'"), std::string::npos);
  EXPECT_NE(xml.find("dt:type='dateTime' rs:dbtype='variantdate'"), std::string::npos);
  EXPECT_NE(xml.find("\t<z:row ID='1' Date='2026-03-14T00:00:00' Time='1899-12-30T09:30:00' Hook_x0020_load='1.5' "
                     "A='0.10000000149011612'/>\r\n"),
            std::string::npos)
      << xml;
  EXPECT_NE(xml.find("\t<z:row ID='2' Date='2026-03-15T00:00:00' Time='1899-12-30T09:30:00' Hook_x0020_load='-2'/>"),
            std::string::npos);
}

/// The rows of a record set by the names of their fields, as an XML reader finds them.
std::vector<std::map<std::string, std::string>> RowsOfXml(const std::string& bytes) {
  std::map<QString, std::string> names;
  std::vector<std::map<std::string, std::string>> rows;
  QXmlStreamReader xml(QByteArray::fromStdString(bytes));
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    const auto attributes = xml.attributes();
    if (xml.name() == QLatin1String("AttributeType")) {
      const QString name = attributes.value("name").toString();
      const QString own = attributes.value("urn:schemas-microsoft-com:rowset", "name").toString();
      names[name] = (own.isEmpty() ? name : own).toStdString();
    }
    if (xml.qualifiedName() != QLatin1String("z:row")) continue;
    auto& row = rows.emplace_back();
    for (const auto& attribute : attributes)
      row[names.at(attribute.name().toString())] = attribute.value().toString().toStdString();
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  return rows;
}

TEST_F(Export, GivesAnXmlReaderTheSameBits) {
  const std::vector<std::string> names = {"Глубина, м", "1st <%> & 'b'", "a_x0020_b",       "C",
                                          "t, °C",      "Q, м³/ч",       "№ 7 – «A» µ ½ 😀", "Ёлка_xΩ"};
  NameChannels(names);
  StartLog(path);
  const float values[] = {0.1F, 1e-38F, 3.4028235e38F, -1.0F / 3.0F, 5e-45F, 123456.79F, 0, 1, 2, 3, 4};
  for (int i = 0; i < 4; ++i) {
    for (std::size_t j = 0; j < names.size(); ++j)
      session.CurrentValue[j + 1] = values[static_cast<std::size_t>(i) + j];
    AppendLogRow(clock.Now() + i * 0.3);
  }
  log.Finalise();
  const auto rows = RowsOfXml(Xml());
  LogReader reader(path);
  ASSERT_EQ(rows.size(), 4U);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const LogRow row = *reader.ByKey(static_cast<std::int64_t>(i) + 1);
    EXPECT_EQ(rows[i].at("ID"), std::to_string(i + 1));
    EXPECT_EQ(rows[i].at("Date"), FormatDate(row.time, "yyyy-mm-dd") + "T00:00:00");
    EXPECT_EQ(rows[i].at("Time"), "1899-12-30T" + FormatDate(row.time, "hh:nn:ss"));
    for (std::size_t j = 0; j < names.size(); ++j)
      EXPECT_EQ(std::strtod(rows[i].at(CleanFieldName(names[j])).c_str(), nullptr), row.values[j]) << names[j];
  }
}

TEST_F(Export, EscapesNamesAndTexts) {
  EXPECT_EQ(XmlName("Depth"), "Depth");
  EXPECT_EQ(XmlName("Глубина"), "Глубина");
  EXPECT_EQ(XmlName("1st %"), "_x0031_st_x0020__x0025_");
  EXPECT_EQ(XmlName("a_x0020_b"), "a_x005F_x0020_b");
  EXPECT_EQ(XmlName("t°"), "t_x00B0_");
  EXPECT_EQ(XmlName("м³"), "м_x00B3_");
  EXPECT_EQ(XmlName("№7"), "_x2116_7");
  EXPECT_EQ(XmlName("\xF0\x9F\x98\x80"), "_x0001F600_");
  EXPECT_EQ(XmlName("\xB0"), "_x00B0_") << "a byte of a code page";
  EXPECT_EQ(XmlName("Ёё_ÀÿЀ"), "Ёё_Àÿ_x0400_");
  EXPECT_EQ(XmlText("<a & 'b' \"c\">\n\x01"), "&lt;a &amp; &apos;b&apos; &quot;c&quot;&gt;&#xA;\xEF\xBF\xBD");
  EXPECT_EQ(XmlText("a\xEF\xBF\xBE\xEF\xBF\xBF"), "a\xEF\xBF\xBD\xEF\xBF\xBD") << "no characters";
}

TEST_F(Export, RefusesAFileWithoutItsTable) {
  MakeDatabase(path, "CREATE TABLE t (a)");
  ErrorOf([&] { ExportSource(path, ExportMode::LogToCsv); }, ErrorNumber::NoSuchTable);
  ErrorOf([&] { ExportSource(path, ExportMode::SummaryToCsv); }, ErrorNumber::NoSuchTable);
}

}  // namespace
}  // namespace velk
