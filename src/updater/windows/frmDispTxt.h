#pragma once

#include <QDialog>

#include <memory>
#include <string>

namespace Ui {
class frmDispTxt;
}

namespace vardenix {

// Shows a text file of an update.
class frmDispTxt : public QDialog {
    Q_OBJECT

public:
    frmDispTxt();
    ~frmDispTxt() override;

    // Reads the file into the window. Error 53 and the like when it cannot be read, 7
    // when it is larger than any text that somebody would read.
    void OpenTxtFile(const std::string& path);

private:
    std::unique_ptr<Ui::frmDispTxt> ui_;
};

} // namespace vardenix
