#include "exchange/write_csv.h"

#include "exchange/field_text.h"
#include "platform/files/output_file.h"

namespace velk {

void WriteCsv(const ExportSource& source, const std::vector<int>& fields, const std::string& path, LongTask& task) {
  OutputFile file(path);
  std::vector<FieldText> texts;
  std::string header;
  for (const int field : fields) {
    const Column& column = source.Fields().at(static_cast<std::size_t>(field));
    texts.emplace_back(KindOf(column), false);
    (header += header.empty() && texts.size() == 1 ? "" : ",") += column.name;
  }
  file.Put(header + "\r\n");
  const auto make = [&]() -> ExportSource::RowText {
    return [texts](const Command& row, std::string& line) mutable {
      for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) line += ',';
        texts[i].AppendTo(line, row, static_cast<int>(i));
      }
      line += "\r\n";
    };
  };
  source.Write(fields, make, file, task);
  file.Complete();
}

}  // namespace velk
