#pragma once

#include "Catalogue.h"

#include "globals/Worker.h"

#include <QMainWindow>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QStandardItemModel;
class QTreeView;

namespace TEKLUVA {
class LogDock;
}

/// Shows what is found in a catalogue, with measures in the unit that the user prefers. A log must be active.
class ViewerWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit ViewerWindow(QString password, QWidget* parent = nullptr);
    ~ViewerWindow() override;

    void open(const QString& path);

protected:
    void changeEvent(QEvent* event) override;

private:
    void makeMenus();
    void search();
    void showEnd(TEKLUVA::E_ProcessResult result);
    void showArticles();
    void setTexts();

    QString m_path;
    const QString m_password;
    QVector<Article> m_articles;
    std::future<TEKLUVA::E_ProcessResult> m_work; ///< valid until its end has been shown
    QLineEdit* m_text;
    QStandardItemModel* m_rows;
    QTreeView* m_table;
    TEKLUVA::LogDock* m_log;
    QMenu* m_fileMenu = nullptr;
    QMenu* m_viewMenu = nullptr;
    QAction* m_open = nullptr;
    QAction* m_settings = nullptr;
    QAction* m_quit = nullptr;
};
