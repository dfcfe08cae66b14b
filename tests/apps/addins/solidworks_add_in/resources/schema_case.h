/// @file Files for which a schema and the add-in may judge differently.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "schema_files.h"

/// Who takes a file.
enum class TakenBy { kBoth, kNobody, kOnlyAddIn, kOnlySchema };

/// A configuration file, and who takes it. What only one of them takes is an exception that is known.
struct SchemaCase {
  std::string name;
  std::string json;
  TakenBy taken_by;
};

inline void PrintTo(const SchemaCase& schema_case, std::ostream* stream) { *stream << schema_case.name; }

/// What the add-in finds wrong in a file; empty if nothing.
using AddInFaults = std::vector<std::wstring> (*)(const std::filesystem::path& file);

/// The judgements of a schema and of the add-in. All cases are judged at once, because the validator's start
/// takes longer than its work.
class SchemaVerdicts {
 public:
  SchemaVerdicts(const std::vector<SchemaCase>& cases, const std::string& schema, AddInFaults faults_in) {
    const SchemaFiles files;
    for (const SchemaCase& one : cases) m_faults[one.name] = faults_in(files.Write(FileOf(one), one.json));
    m_verdicts = files.Judge(DefaultConfiguration() / "schemas" / schema);
  }

  /// Expects that the file is taken by whom the case says.
  void Expect(const SchemaCase& one) const {
    const std::string& verdict = m_verdicts.at(FileOf(one));
    const std::vector<std::wstring>& faults = m_faults.at(one.name);
    EXPECT_EQ(verdict.empty(), one.taken_by == TakenBy::kBoth || one.taken_by == TakenBy::kOnlySchema)
        << one.json << "\n"
        << verdict;
    EXPECT_EQ(faults.empty(), one.taken_by == TakenBy::kBoth || one.taken_by == TakenBy::kOnlyAddIn)
        << one.json << "\n"
        << testing::PrintToString(faults);
  }

 private:
  static std::string FileOf(const SchemaCase& one) { return one.name + ".json"; }

  std::map<std::string, std::string> m_verdicts;
  std::map<std::string, std::vector<std::wstring>> m_faults;
};
