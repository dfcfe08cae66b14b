/// @file Answers of a PLM client, in several sizes and scripts.
#pragma once

#include <cstddef>
#include <string>

enum class Script { kLatin, kChinese };

/// The lists that a command reads of an answer.
inline constexpr const wchar_t* kReadLists[] = {L"OpenFile", L"InsertFile", L"ReplaceFileByCovering",
                                                L"ReplaceFile"};

/// An answer of about `bytes` bytes of UTF-8 to the data selector: the four lists with paths, and what else a
/// client says.
std::wstring SampleAnswer(Script script, std::size_t bytes);

/// The same as UTF-8.
std::string SampleAnswerUtf8(Script script, std::size_t bytes);

/// Text of about `bytes` bytes of UTF-8, as it stands in documents.
std::string SampleTextUtf8(Script script, std::size_t bytes);
