// The report of a run, read back (docs/report.md).
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace corvane::pack {

// The fields of one object that are texts or numbers, by name. Those of an object in it are called
// "properties.NAME"; lists are left out.
using ReportFields = std::map<std::string, std::string>;

// All objects of a report, in their order; none if there is no such file.
std::vector<ReportFields> readReport(const std::filesystem::path& path);

}  // namespace corvane::pack
