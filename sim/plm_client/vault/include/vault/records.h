/// @file What a vault holds, as plain values.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace plm_vault {

enum class ItemKind { kPart, kAssembly, kDrawing };
enum class ItemState { kInWork, kInReview, kReleased };

/// Names with values, in the order in which they were given.
using Properties = std::vector<std::pair<std::wstring, std::wstring>>;

struct User {
  std::wstring name;  ///< with which the user logs in
  std::wstring full_name;
};

/// A part, an assembly or a drawing, as it is in its latest revision.
struct Item {
  std::wstring number;  ///< such as "P-00012"; unique
  std::wstring name;
  std::wstring file_name;  ///< such as "bolt.sldprt"; unique, without regard to case
  ItemKind kind = ItemKind::kPart;
  ItemState state = ItemState::kInWork;
  int revision = 1;               ///< the latest; 1 is shown as "A"
  std::wstring checked_out_by{};  ///< a user's name; empty: nobody has it
  std::wstring checked_out_at{};
};

struct Revision {
  int revision = 1;
  std::wstring author;
  std::wstring at;
  std::wstring comment;
};

struct Material {
  std::wstring number;  ///< such as "M-000012"
  std::wstring name;
  std::wstring group;
  bool is_temporary = true;  ///< until its user keeps it
  std::wstring created_by;
  std::wstring created_at;
  Properties properties{};
};

enum class TaskState { kOpen, kDone };

/// A task of a workflow, with the documents that it is about.
struct Task {
  std::wstring number;  ///< such as "T-0003"
  std::wstring title;
  std::wstring workflow;  ///< "release", "review" or "change"
  TaskState state = TaskState::kOpen;
  std::wstring assignee;
  std::wstring created_by;
  std::wstring created_at;
  std::vector<std::wstring> items{};  ///< numbers
};

/// What an import has made of a file.
struct Imported {
  Item item;
  bool is_new = false;  ///< a new item; else the next revision of one
};

/// A revision for people: 1 is "A", 26 is "Z", 27 is "AA".
std::wstring RevisionLabel(int revision);

/// The revision of a label, without regard to case; 0 if it is none.
int RevisionOfLabel(std::wstring_view label);

}  // namespace plm_vault
