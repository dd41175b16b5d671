#include "Printing.h"

#include "RuntimeError.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTextCursor>
#include <QTextDocument>

namespace
{

RuntimeError failure(const QString& reason)
{
    return {ErrorNumber::PrinterError, RuntimeError::usualDescription(ErrorNumber::PrinterError) + ": " + reason};
}

void fill(QTextDocument& document, QPrinter& printer, const QString& title, const QString& body)
{
    document.documentLayout()->setPaintDevice(&printer);
    document.setDocumentMargin(0);

    // One tab stop behind the widest label of a report, so that what follows the labels stands in one column.
    QTextOption option = document.defaultTextOption();
    option.setTabStopDistance(QFontMetricsF(document.defaultFont()).horizontalAdvance("Description:      "));
    document.setDefaultTextOption(option);

    QTextCharFormat heading;
    heading.setFontWeight(QFont::Bold);
    heading.setFontPointSize(document.defaultFont().pointSizeF() * 1.5);
    QTextCharFormat normal;
    normal.setFont(document.defaultFont());

    QTextCursor cursor(&document);
    cursor.insertText(title, heading);
    if (!title.endsWith('\n'))
        cursor.insertBlock();
    cursor.insertText(body, normal);
}

} // namespace

void printing::print(QPrinter& printer, const QString& title, const QString& body)
{
    if (!printer.isValid())
        throw failure("the printer is not available.");
    printer.setDocName(title.trimmed());

    QPainter painter;
    if (!painter.begin(&printer))
        throw failure("the document can't be started.");

    QTextDocument document;
    fill(document, printer, title, body);
    const QSizeF page = printer.pageRect(QPrinter::DevicePixel).size();
    document.setPageSize(page);

    for (int number = 0; number < document.pageCount(); ++number) {
        if (number > 0 && !printer.newPage())
            throw failure("the next page can't be started.");
        painter.save();
        painter.translate(0, -number * page.height());
        document.drawContents(&painter, QRectF(0, number * page.height(), page.width(), page.height()));
        painter.restore();
    }
    if (!painter.end() || printer.printerState() == QPrinter::Error)
        throw failure("the document can't be ended.");
}

void printing::printOnDefault(const QString& title, const QString& body)
{
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull())
        throw failure("there is no default printer.");
    QPrinter printer(info, QPrinter::HighResolution);
    print(printer, title, body);
}
