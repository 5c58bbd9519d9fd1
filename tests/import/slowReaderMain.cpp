// A reader that is slow, or that lies: each of its tables is one way to do so. It is started as the true one
// is.
#include "import/tableServer.h"

#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

void say(const void* bytes, std::size_t count) {
    if (::write(STDOUT_FILENO, bytes, count) != ssize_t(count))
        std::_Exit(1);
}

void sayFrame(quint32 kind, const std::string& content) {
    const Frame::Head head{kind, quint32(content.size())};
    say(&head, sizeof head);
    say(content.data(), content.size());
}

std::string numbers(std::initializer_list<quint32> values) {
    return {reinterpret_cast<const char*>(values.begin()), values.size() * sizeof(quint32)};
}

void sayColumn() {
    sayFrame(Frame::Columns, numbers({1, 1}) + "c");
}

void sayRow() {
    sayFrame(Frame::Rows, numbers({1, 4}) + "read");
}

[[noreturn]] void beSilent() {
    for (;;)
        pause();
}

void sayHead(quint32 kind, quint32 length) {
    const Frame::Head head{kind, length};
    say(&head, sizeof head);
}

void beSlow() {
    for (int i = 0; i < 30; ++i) {
        QThread::msleep(100);
        sayFrame(Frame::Alive, {});
    }
}

/// A frame whose bytes come one by one.
void dribble() {
    const std::string column = numbers({1, 1}) + "c";
    sayHead(Frame::Columns, quint32(column.size()));
    for (const char byte : column) {
        QThread::msleep(300);
        say(&byte, 1);
    }
    sayRow();
    sayFrame(Frame::End, {});
}

/// One frame that no reader sends, after the columns or without them, and nothing more.
struct WrongFrame {
    const char* table;
    bool afterColumns;
    quint32 kind;
    std::string content;
};

void tellWrongFrame(std::string_view table) {
    const WrongFrame frames[] = {
        {"huge columns", false, Frame::Columns, numbers({0xFFFFFFFE}) + std::string(1000, '\0')},
        {"huge rows", true, Frame::Rows, numbers({0xFFFFFFFF, 0})},
        {"negative length", true, Frame::Rows, numbers({1, 0xFFFFFFFE}) + "x"},
        {"lengths that overflow", true, Frame::Rows,
         numbers({4, 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF}) + "x"},
        {"short texts", true, Frame::Rows, numbers({2, 1, 2}) + "xy"},
        {"more texts", true, Frame::Rows, numbers({1, 1}) + "xy"},
        {"no UTF-8", true, Frame::Rows, numbers({1, 2}) + "\xB4\xF2"},
        {"a torn sign", true, Frame::Rows, numbers({1, 2}) + "\xE7\xBA"},
        {"too many columns", false, Frame::Columns,
         numbers({5000}) + std::string(5000 * sizeof(quint32), '\0')},
        {"a sign in two cells", true, Frame::Rows, numbers({2, 1, 2}) + "\xE7\xBA\xB8"},
        {"no rows", true, Frame::Rows, numbers({0})},
        {"too many rows", true, Frame::Rows,
         numbers({Frame::BlockRows + 1}) + std::string((Frame::BlockRows + 1) * sizeof(quint32), '\0')},
        {"columns again", true, Frame::Columns, numbers({1, 1}) + "d"},
        {"rows without columns", false, Frame::Rows, numbers({1, 4}) + "read"},
        {"end without columns", false, Frame::End, {}},
        {"tables again", true, Frame::Tables, numbers({0})},
        {"unknown frame", false, 77, "x"},
        {"long refusal", false, Frame::Refused, "<b>" + std::string(1000000, 'x') + "\n\n"}};
    for (const WrongFrame& frame : frames)
        if (table == frame.table) {
            if (frame.afterColumns)
                sayColumn();
            sayFrame(frame.kind, frame.content);
            beSilent();
        }
}

void tellRowsOfNoColumn() {
    sayFrame(Frame::Columns, numbers({0}));
    sayFrame(Frame::Rows, numbers({Frame::BlockRows}));
    beSilent();
}

void tellGarbage() {
    std::string noise;
    for (unsigned i = 0; i < 100000; ++i)
        noise += char(i * 2654435761U >> 13);
    say(noise.data(), noise.size());
    beSilent();
}

template <typename Tell> void forEver(Tell&& tell) {
    for (;;)
        tell();
}

void tellEndless(std::string_view what) {
    if (what == "alive")
        forEver([] { sayFrame(Frame::Alive, {}); });
    sayColumn();
    if (what == "rows")
        forEver(sayRow);
    const std::string nulls = numbers({Frame::BlockRows}) + std::string(Frame::BlockRows * 4, '\xFF');
    forEver([&nulls] { sayFrame(Frame::Rows, nulls); });
}

void tellCut(std::string_view what) {
    if (what == "a head")
        say("\x01\x00", 2);
    if (what == "rows") {
        sayColumn();
        sayRow();
    }
    if (what == "a frame") {
        sayHead(Frame::Columns, 100);
        say("x", 1);
        beSilent();
    }
    std::_Exit(0);
}

void tell(std::string_view table) {
    constexpr std::string_view endless = "endless ";
    constexpr std::string_view cut = "cut in ";
    if (table == "dribbled")
        return dribble();
    if (table == "slow")
        beSlow();
    else if (table == "silent")
        beSilent();
    else if (table.starts_with(endless))
        tellEndless(table.substr(endless.size()));
    else if (table.starts_with(cut))
        tellCut(table.substr(cut.size()));
    else if (table == "rows of no column")
        tellRowsOfNoColumn();
    else if (table == "garbage")
        tellGarbage();
    else if (table == "huge frame") {
        sayHead(Frame::Columns, 0xFFFFFFFF);
        beSilent();
    } else
        tellWrongFrame(table);
    sayColumn();
    sayRow();
    sayFrame(Frame::End, {});
}

} // namespace

int main() {
    sayFrame(Frame::Tables, numbers({1, 4}) + "slow");
    for (std::string line;;) {
        char sign = 0;
        if (::read(STDIN_FILENO, &sign, 1) != 1)
            return 0;
        if (sign != '\n') {
            line += sign;
            continue;
        }
        tell(line);
        line.clear();
    }
}
