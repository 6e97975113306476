// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>

#include "platform/list/table_cell.h"

namespace hosts::desktop {

/// The measures of the platform's cells by which rows are laid out, in points.
class CellMeasures : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(double margin MEMBER margin CONSTANT)
    Q_PROPERTY(double switchWidth MEMBER switchWidth CONSTANT)

    const double margin = platform::UITableViewCell::margin;
    const double switchWidth = platform::PSTableCell::switchWidth;
};

}  // namespace hosts::desktop
