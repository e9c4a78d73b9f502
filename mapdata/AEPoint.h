#pragma once

#include "mapdata/A2DData.h"
#include "mapdata/MapLoadResult.h"

#include "ui_AEPoint.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QVector>

#include <functional>

/// One energy at which a map was measured: its map data file, the energy, what the panel uses it for, and read-only
/// fields for the values of the target and of four references at this energy.
class AEPoint : public QFrame
{
    Q_OBJECT

public:
    explicit AEPoint(QWidget *parent = nullptr);

    /// What the file loaded last holds; to be used only when loaded().
    const A2DData &data() const { return m_data; }
    bool loaded() const { return m_loaded; }
    /// What became of the file chosen last.
    const MapLoadResult &loadResult() const { return m_result; }
    /// Gives the maps of the other rows when a file is loaded: positions that they have already take no memory again.
    using OtherMaps = std::function<QVector<const A2DData *>()>;
    void setOtherMaps(const OtherMaps &others) { m_otherMaps = others; }

    /// eV; 0 when the field holds no number.
    double energy() const;
    QString energyText() const;
    QLineEdit *energyEdit() const { return ui.Energy; }
    /// Shows an energy; nothing is announced.
    void setEnergyText(const QString &text);

    bool isUsed() const;
    bool isVPoint() const;
    bool isForLCF() const;
    /// Nothing is announced.
    void setUsed(bool used);
    void setVPoint(bool vPoint);
    void setForLCF(bool forLCF);

    /// The values as shown, six significant digits; 0 for a field that holds no number.
    double targetValue() const;
    double referenceValue(int reference) const; ///< reference 0 to 3; 0 for any other
    void setTargetValue(double value);
    void clearTargetValue();
    /// A reference other than 0 to 3 changes nothing.
    void setReferenceValue(int reference, double value);
    void clearReferenceValue(int reference);

    /// Marks the size shown as another one than that of the map calculated, or takes the mark away.
    void warnOfSize(bool isOther);

    /// The number shown in front, counted from 1.
    void setNumber(int place);
    /// Titles above the controls, for the first row of a list. Off at first.
    void showTitles(bool areShown);
    AFileSelect *fileSelect() const { return ui.FileSelect; }
    QPushButton *showMapButton() const { return ui.ShowMapB; }

signals:
    void newDir(const QString &dir);
    void newEnergy(double e);
    void newData();
    void changedCB();

public slots:
    /// Loads a map data file. Its energy is announced first, then the data, loaded() being true by then; what could
    /// not be loaded is not announced, and neither is an empty path, which makes the row not loaded.
    void loadData(const QString &path);
    void inNewEnergy();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    /// What the row tells about the file it was given.
    struct LoadReport {
        QString text;
        bool isWarning = false;
    };
    LoadReport reportOf(const QString &path) const;
    QVector<QLabel *> titles() const;

    A2DData m_data;
    MapLoadResult m_result;
    OtherMaps m_otherMaps = [] {
        return QVector<const A2DData *>();
    };
    LoadReport m_report;
    bool m_loaded = false;
    Ui_AEPoint ui;
    QVector<QLineEdit *> m_mutFields; // of the references, in order
};
