#include "TemporarySettings.h"

namespace
{

constexpr const char* variable = "XDG_CONFIG_HOME";

} // namespace

TemporarySettings::TemporarySettings() : m_hadFormer(qEnvironmentVariableIsSet(variable)), m_former(qgetenv(variable))
{
    if (!m_folder.isValid())
        qFatal("No temporary folder for settings: %s", qUtf8Printable(m_folder.errorString()));
    qputenv(variable, m_folder.path().toUtf8());
}

TemporarySettings::~TemporarySettings()
{
    if (m_hadFormer)
        qputenv(variable, m_former);
    else
        qunsetenv(variable);
}
