#include "Resources.h"

#include <QDir>

void initQuorvaneResources()
{
    Q_INIT_RESOURCE(quorvane);
}
