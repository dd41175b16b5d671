#pragma once

class QWidget;

/// Opens the datasource window, or brings it to the front: it lists, adds, changes, tests and removes the datasources
/// of the family through the driver manager's installer. It is not modal, and the tree does not follow what it changes
/// until the datasources are refreshed.
void showDatasourceWindow(QWidget* owner);
