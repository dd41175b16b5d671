#include "ScreenReader.h"

#include <QAccessible>
#include <QVariant>

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

QStringList heard;
QAccessible::UpdateHandler former = nullptr;

void hear(QAccessibleEvent* event)
{
    switch (event->type()) {
    case QAccessible::TextInserted:
        heard.append('+'_L1 + static_cast<QAccessibleTextInsertEvent*>(event)->textInserted());
        break;
    case QAccessible::TextRemoved:
        heard.append('-'_L1 + static_cast<QAccessibleTextRemoveEvent*>(event)->textRemoved());
        break;
    case QAccessible::TextUpdated:
        heard.append('-'_L1 + static_cast<QAccessibleTextUpdateEvent*>(event)->textRemoved());
        heard.append('+'_L1 + static_cast<QAccessibleTextUpdateEvent*>(event)->textInserted());
        break;
    case QAccessible::ValueChanged:
        heard.append('='_L1 + static_cast<QAccessibleValueChangeEvent*>(event)->value().toString());
        break;
    default:
        heard.append(QString::number(event->type()));
    }
}

template <class Function>
Function* symbol(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

/// Qt tells of changes as long as its platform says that somebody listens. Off-screen nobody ever asks over the bus,
/// and the switch belongs to no public class, so that it is looked up by its name.
void setListening(bool listening)
{
    auto* const integration = symbol<void*>("_ZN22QGuiApplicationPrivate20platform_integrationE");
    auto* const accessibility = symbol<void*(void*)>("_ZNK20QPlatformIntegration13accessibilityEv");
    auto* const setActive = symbol<void(void*, bool)>("_ZN22QPlatformAccessibility9setActiveEb");
    ASSERT_TRUE(integration && accessibility && setActive) << "this Qt has another switch";
    setActive(accessibility(*integration), listening);
    ASSERT_EQ(QAccessible::isActive(), listening);
}

} // namespace

ScreenReader::ScreenReader()
{
    heard.clear();
    former = QAccessible::installUpdateHandler(&hear);
    setListening(true);
}

ScreenReader::~ScreenReader()
{
    setListening(false);
    QAccessible::installUpdateHandler(former);
}

QStringList ScreenReader::takeHeard()
{
    return std::exchange(heard, {});
}
