#include "apps/runner/result_writer.h"

#include "apps/runner/csv_writer.h"
#include "apps/runner/npz_writer.h"

namespace runner {

std::unique_ptr<ResultWriter> make_result_writer(const std::filesystem::path& name, ResultFile& file,
                                                 const std::vector<std::string_view>& names) {
  if (name.extension() == ".npz") return std::make_unique<NpzWriter>(file, names);
  return std::make_unique<CsvWriter>(file, names);
}

}  // namespace runner
