// A window "Files" whose whole face is the files named on the command line, to be dragged
// somewhere else as from a file manager.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

namespace {

class Files : public QWidget {
public:
    explicit Files(const QStringList& paths) {
        for (const QString& path : paths)
            urls_.append(QUrl::fromLocalFile(path));
        setWindowTitle("Files");
        setFixedSize(120, 60);
    }

protected:
    void mousePressEvent(QMouseEvent* /*event*/) override {
        auto* drag = new QDrag(this); // goes by itself
        auto* files = new QMimeData;
        files->setUrls(urls_);
        drag->setMimeData(files);
        drag->exec(Qt::CopyAction);
    }

private:
    QList<QUrl> urls_;
};

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    Files window(QCoreApplication::arguments().mid(1));
    window.show();
    return QApplication::exec();
}
