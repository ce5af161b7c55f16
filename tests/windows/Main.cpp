#include "platform/windows/Theme.h"
#include "windows/WindowTest.h"

namespace vardenix::tests {

namespace {

Dialogs* answers = nullptr;

class ForwardedDialogs : public Dialogs {
public:
    BoxAnswer MessageBox(const std::string& text, const std::string& title, BoxIcon icon,
                         BoxButtons buttons) override {
        if (answers != nullptr)
            return answers->MessageBox(text, title, icon, buttons);
        ADD_FAILURE() << "an error reached the barrier: " << text;
        return BoxAnswer::Continue;
    }
    FileAnswer OpenFile(const FileQuestion&) override { std::abort(); }
    std::vector<std::string> OpenFiles(const FileQuestion&) override { std::abort(); }
    FileAnswer SaveFile(const FileQuestion&) override { std::abort(); }
    std::optional<std::string> Folder(const std::string&, const std::string&) override {
        std::abort();
    }
    uint32_t Color(uint32_t) override { std::abort(); }
    FontChoice Font(const FontChoice&) override { std::abort(); }
};

RunTimeBarrier* barrier = nullptr;

} // namespace

RunTimeBarrier& Barrier() { return *barrier; }

BarrierAnswers::BarrierAnswers() { answers = this; }
BarrierAnswers::~BarrierAnswers() { answers = nullptr; }

} // namespace vardenix::tests

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    vardenix::tests::ForwardedDialogs dialogs;
    vardenix::RunTimeBarrier barrier(argc, argv, dialogs);
    vardenix::tests::barrier = &barrier;
    vardenix::ApplyTheme();
    return RUN_ALL_TESTS();
}
