#pragma once

#include <QCoreApplication>

/// The sentences of the import that users read: ImportText::tr("...").
class ImportText
{
    Q_DECLARE_TR_FUNCTIONS(ImportText)
};
