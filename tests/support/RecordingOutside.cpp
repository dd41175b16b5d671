#include "RecordingOutside.h"

RecordingOutside::RecordingOutside() : m_former(Outside::replace(this)) {}

RecordingOutside::~RecordingOutside()
{
    Outside::replace(m_former);
}

bool RecordingOutside::open(const QString& target)
{
    opened.append(target);
    return opens;
}

bool RecordingOutside::run(const QString& program, const QStringList& arguments)
{
    started.push_back({program, arguments});
    return runs;
}

void RecordingOutside::print(const QString& title, const QString& body)
{
    if (printFailure)
        throw RuntimeError(*printFailure);
    printed.push_back({title, body});
}

void RecordingOutside::setClipboard(const QString& text)
{
    clipboard = text;
}

QDateTime RecordingOutside::now()
{
    return clock;
}

void RecordingOutside::endProcess()
{
    ++ends;
    throw ProcessEnded{};
}
