#pragma once

#include <QStringList>

namespace numeric
{
class FileSet;
}
class FourPs;

/// Saves pictures of what a panel shows, PNG with title (and colour bar), into `folder`, which is made when missing:
/// stem_Muts.png and so on for every graph that has something to show, stem_Map_Valence.png and so on for each computed
/// quantity, stem_Map_Valence_error.png and stem_Map_Misfit.png where they are known, stem_Data_1.png and so on for the
/// maps that were loaded, by energy row. Stops at the first failure with one sentence in `error`. The pictures take
/// their places with the others of the set. Leaves other zooms and another quantity in the displays; nothing comes up
/// on the screen.
bool savePictures(FourPs *panel, const QString &folder, const QString &stem, numeric::FileSet *set, QString *error);

/// The paths of all pictures that savePictures() can make.
QStringList pictureFiles(const QString &folder, const QString &stem);
