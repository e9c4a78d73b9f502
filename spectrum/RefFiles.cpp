#include "spectrum/RefFiles.h"

#include "spectrum/ARefFile.h"

void RefFiles::add(ARefFile *row)
{
    connect(row, &ARefFile::changedUse, this, &RefFiles::changedUse);
    connect(row, &ARefFile::selectedFile, this, &RefFiles::selectedFile);
}
