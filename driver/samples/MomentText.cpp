#include "MomentText.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <iterator>

namespace tarnwick::samples
{
namespace
{

constexpr const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string Number(int number, int width)
{
    std::array<char, 16> text;
    return std::string(text.data(),
                       static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%0*d", width, number)));
}

} // namespace

std::optional<records::Moment> ParseMoment(std::string_view text)
{
    const bool hasDate = text.find('-') != std::string_view::npos;
    const bool hasTime = text.find(':') != std::string_view::npos;
    if (!hasDate && !hasTime)
        return std::nullopt;
    const records::DateFormat format(hasDate && hasTime ? "YYYY-MM-DD hh:mm:ss" : hasDate ? "YYYY-MM-DD" : "hh:mm:ss");
    records::Moment moment;
    if (format.Read(text, moment) != records::DateFormat::Reading::Moment)
        return std::nullopt;
    return moment;
}

std::string FormatMoment(const records::Moment& moment, std::string_view format)
{
    struct Token {
        std::string_view text;
        std::string value;
    };
    // The longest token of those that begin alike comes first.
    const Token tokens[] = {
        {"YYYY", Number(moment.year, 4)}, {"MMM", months[moment.month - 1]}, {"YY", Number(moment.year % 100, 2)},
        {"MM", Number(moment.month, 2)},  {"DD", Number(moment.day, 2)},     {"hh", Number(moment.hour, 2)},
        {"mm", Number(moment.minute, 2)}, {"ss", Number(moment.second, 2)},  {"cc", Number(moment.hundredths, 2)}};
    std::string text;
    while (!format.empty()) {
        const auto* const token = std::find_if(std::begin(tokens), std::end(tokens), [&](const Token& candidate) {
            return format.starts_with(candidate.text);
        });
        const bool isKnown = token != std::end(tokens);
        text += isKnown ? token->value : std::string(1, format.front());
        format.remove_prefix(isKnown ? token->text.size() : 1);
    }
    return text;
}

std::int64_t UnixSeconds(const records::Moment& moment)
{
    using namespace std::chrono;
    const sys_days day{year(moment.year) / month(static_cast<unsigned>(moment.month)) /
                       std::chrono::day(static_cast<unsigned>(moment.day))};
    return std::int64_t{duration_cast<seconds>(day.time_since_epoch()).count()} + moment.hour * 3600 +
           moment.minute * 60 + moment.second;
}

} // namespace tarnwick::samples
