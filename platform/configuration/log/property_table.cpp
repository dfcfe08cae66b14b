#include "property_table.h"

#include <log4cplus/helpers/stringhelper.h>
#include <log4cplus/spi/factory.h>

#include <algorithm>
#include <initializer_list>

#include "configuration/log_names.h"

namespace {

using enum ValueKind;

constexpr Property kGeneral[] = {
    {L"configDebug", kBoolean},
    {L"quietMode", kBoolean},
    {L"disableOverride", kBoolean},
    {L"threadPoolSize", kNumber},
};

constexpr Property kEveryAppender[] = {
    {L"Threshold", kLevel},
    {L"AsyncAppend", kBoolean},
    {L"UseLockFile", kBoolean},
    {L"LockFile", kLockFile},
};

// Of every file appender of the library.
constexpr Property kLibraryFile[] = {
    {L"File", kFile},          {L"Locale", kLocale},      {L"ImmediateFlush", kBoolean},
    {L"CreateDirs", kBoolean}, {L"ReopenDelay", kNumber}, {L"BufferSize", kNumber},
    {L"Append", kBoolean},     {L"TextMode", kTextMode},
};

constexpr Property kSharedFile[] = {{L"File", kFile}, {L"MaxFileSize", kSize}, {L"MaxBackupIndex", kNumber}};
constexpr Property kRollingFile[] = {{L"MaxFileSize", kSize}, {L"MaxBackupIndex", kNumber}};
constexpr Property kDailyFile[] = {
    {L"Schedule", kSchedule},
    {L"RollOnClose", kBoolean},
    {L"DatePattern", kText},
    {L"MaxBackupIndex", kNumber},
};
constexpr Property kTimeBasedFile[] = {
    {L"FilenamePattern", kPath},
    {L"MaxHistory", kNumber},
    {L"CleanHistoryOnStart", kBoolean},
    {L"RollOnClose", kBoolean},
};
constexpr Property kConsole[] = {{L"logToStdErr", kBoolean}, {L"ImmediateFlush", kBoolean}};
constexpr Property kWindowsConsole[] = {
    {L"AllocConsole", kBoolean}, {L"logToStdErr", kBoolean}, {L"TextColor", kNumber}};
constexpr Property kEventLog[] = {{L"server", kText}, {L"log", kText}, {L"source", kText}};
constexpr Property kUdp[] = {{L"host", kText}, {L"port", kNumber}, {L"IPv6", kBoolean}};

// Without the types that run a thread of their own.
constexpr ComponentType kAppenders[] = {
    {kSharedFileAppenderName, kSharedFile},
    {L"log4cplus::FileAppender", {}, kLibraryFile},
    {L"log4cplus::RollingFileAppender", kRollingFile, kLibraryFile},
    {L"log4cplus::DailyRollingFileAppender", kDailyFile, kLibraryFile},
    {L"log4cplus::TimeBasedRollingFileAppender", kTimeBasedFile, kLibraryFile},
    {L"log4cplus::ConsoleAppender", kConsole},
    {L"log4cplus::Win32ConsoleAppender", kWindowsConsole},
    {L"log4cplus::Win32DebugAppender", {}},
    {L"log4cplus::NTEventLogAppender", kEventLog},
    {L"log4cplus::Log4jUdpAppender", kUdp},
    {L"log4cplus::NullAppender", {}},
};

constexpr Property kTtccLayout[] = {
    {L"DateFormat", kText},           {L"Use_gmtime", kBoolean},      {L"ThreadPrinting", kBoolean},
    {L"CategoryPrefixing", kBoolean}, {L"ContextPrinting", kBoolean},
};
constexpr Property kPatternLayout[] = {
    {L"ConversionPattern", kText}, {L"Pattern", kText}, {L"NDCMaxDepth", kNumber}};

constexpr ComponentType kLayouts[] = {
    {L"log4cplus::SimpleLayout", {}},
    {L"log4cplus::TTCCLayout", kTtccLayout},
    {L"log4cplus::PatternLayout", kPatternLayout},
};

constexpr Property kMatchFilter[] = {{L"AcceptOnMatch", kBoolean}};
constexpr Property kLevelMatch[] = {{L"LogLevelToMatch", kLevel}};
constexpr Property kLevelRange[] = {{L"LogLevelMin", kLevel}, {L"LogLevelMax", kLevel}};
constexpr Property kStringMatch[] = {{L"StringToMatch", kText}};
constexpr Property kNdcMatch[] = {{L"NeutralOnEmpty", kBoolean}, {L"NDCToMatch", kText}};
constexpr Property kMdcMatch[] = {
    {L"NeutralOnEmpty", kBoolean}, {L"MDCValueToMatch", kText}, {L"MDCKeyToMatch", kText}};

constexpr ComponentType kFilters[] = {
    {L"log4cplus::spi::DenyAllFilter", {}},
    {L"log4cplus::spi::LogLevelMatchFilter", kLevelMatch, kMatchFilter},
    {L"log4cplus::spi::LogLevelRangeFilter", kLevelRange, kMatchFilter},
    {L"log4cplus::spi::StringMatchFilter", kStringMatch, kMatchFilter},
    {L"log4cplus::spi::NDCMatchFilter", kNdcMatch, kMatchFilter},
    {L"log4cplus::spi::MDCMatchFilter", kMdcMatch, kMatchFilter},
};

bool IsOneOf(const std::wstring& value, std::initializer_list<std::wstring_view> values) {
  return std::ranges::find(values, log4cplus::helpers::toUpper(value)) != values.end();
}

bool IsLevel(const std::wstring& value) {
  return IsOneOf(value,
                 {L"ALL", L"TRACE", L"DEBUG", L"INFO", L"WARN", L"ERROR", L"FATAL", L"OFF", L"NOTSET"});
}

// Up to nine digits, which fit into every integer that the library reads.
bool IsNumber(std::wstring_view value) {
  return !value.empty() && value.size() <= 9 &&
         std::ranges::all_of(value, [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

bool IsSize(const std::wstring& value) {
  const std::wstring text = log4cplus::helpers::toUpper(value);
  const bool has_unit = text.ends_with(L"KB") || text.ends_with(L"MB");
  return IsNumber(std::wstring_view(text).substr(0, text.size() - (has_unit ? 2 : 0)));
}

bool IsLocale(const std::wstring& value) {
  return value == kUtf8LocaleName || log4cplus::spi::getLocaleFactoryRegistry().exists(value) ||
         value == L"C" || value == L"POSIX";
}

const Property* FindKey(std::span<const Property> properties, std::wstring_view key) {
  const auto found = std::ranges::find(properties, key, &Property::key);
  return found == properties.end() ? nullptr : &*found;
}

const ComponentType* FindType(std::span<const ComponentType> types, std::wstring_view name) {
  const auto found = std::ranges::find(types, name, &ComponentType::name);
  return found == types.end() ? nullptr : &*found;
}

}  // namespace

const Property* ComponentType::Find(std::wstring_view key) const {
  const Property* const property = FindKey(own, key);
  return property ? property : FindKey(family, key);
}

bool ComponentType::Has(ValueKind kind) const {
  return std::ranges::count(own, kind, &Property::kind) + std::ranges::count(family, kind, &Property::kind) >
         0;
}

const ComponentType* FindAppenderType(std::wstring_view name) { return FindType(kAppenders, name); }
const ComponentType* FindLayoutType(std::wstring_view name) { return FindType(kLayouts, name); }
const ComponentType* FindFilterType(std::wstring_view name) { return FindType(kFilters, name); }
const Property* FindCommonAppenderProperty(std::wstring_view key) { return FindKey(kEveryAppender, key); }
const Property* FindGeneralProperty(std::wstring_view key) { return FindKey(kGeneral, key); }

bool IsTrue(const std::wstring& value) {
  return IsOneOf(value, {L"TRUE"}) ||
         (IsNumber(value) && value.find_first_not_of(L'0') != std::wstring::npos);
}

const wchar_t* FindComplaint(ValueKind kind, const std::wstring& value) {
  using enum ValueKind;
  switch (kind) {
    case kBoolean:
      return IsOneOf(value, {L"TRUE", L"FALSE"}) || IsNumber(value) ? nullptr : L"is not true or false";
    case kNumber:
      return IsNumber(value) ? nullptr : L"is not a number";
    case kSize:
      return IsSize(value) ? nullptr : L"is not a size such as 10MB";
    case kLevel:
      return IsLevel(value) ? nullptr : L"is not a level";
    case kLocale:
      return IsLocale(value) ? nullptr : L"is not a locale";
    case kSchedule:
      return IsOneOf(value, {L"MONTHLY", L"WEEKLY", L"DAILY", L"TWICE_DAILY", L"HOURLY", L"MINUTELY"})
                 ? nullptr
                 : L"is not a schedule";
    case kTextMode:
      return IsOneOf(value, {L"TEXT", L"BINARY"}) ? nullptr : L"is not Text or Binary";
    case kText:
    case kFile:
    case kLockFile:
    case kPath:
      return nullptr;
  }
  return nullptr;
}
