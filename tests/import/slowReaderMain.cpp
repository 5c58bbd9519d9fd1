// A reader that is slow, or that lies: each of its tables is one way to do so. It is started as the true one is.
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

void tell(std::string_view table) {
    if (table == "slow") {
        for (int i = 0; i < 30; ++i) {
            QThread::msleep(100);
            sayFrame(Frame::Alive, {});
        }
    } else if (table == "silent") {
        beSilent();
    } else if (table == "dead") {
        std::_Exit(0);
    } else if (table == "half a head") {
        say("\x01\x00", 2);
        std::_Exit(0);
    } else if (table == "half a frame") {
        const Frame::Head head{Frame::Columns, 100};
        say(&head, sizeof head);
        say("x", 1);
        beSilent();
    } else if (table == "dead among rows") {
        sayColumn();
        sayRow();
        std::_Exit(0);
    } else if (table == "alive for ever") {
        for (;;)
            sayFrame(Frame::Alive, {});
    } else if (table == "endless rows") {
        for (sayColumn();;)
            sayRow();
    } else if (table == "endless nothing") {
        for (sayColumn();;)
            sayFrame(Frame::Rows, numbers({0}));
    } else if (table == "endless columns") {
        for (;;)
            sayColumn();
    } else if (table == "endless nulls") {
        const std::string block = numbers({Frame::BlockRows}) + std::string(Frame::BlockRows * 4, '\xFF');
        for (sayColumn();;)
            sayFrame(Frame::Rows, block);
    } else if (table == "huge frame") {
        const Frame::Head head{Frame::Rows, 0xFFFFFFFF};
        sayColumn();
        say(&head, sizeof head);
        beSilent();
    } else if (table == "huge columns") {
        sayFrame(Frame::Columns, numbers({0xFFFFFFFE}) + std::string(1000, '\0'));
        beSilent();
    } else if (table == "huge rows") {
        sayColumn();
        sayFrame(Frame::Rows, numbers({0xFFFFFFFF, 0}));
        beSilent();
    } else if (table == "negative length") {
        sayColumn();
        sayFrame(Frame::Rows, numbers({1, 0xFFFFFFFE}) + "x");
        beSilent();
    } else if (table == "lengths that overflow") {
        sayColumn();
        sayFrame(Frame::Rows, numbers({4, 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF}) + "x");
        beSilent();
    } else if (table == "short texts") {
        sayColumn();
        sayFrame(Frame::Rows, numbers({2, 1, 2}) + "xy");
        beSilent();
    } else if (table == "more texts") {
        sayColumn();
        sayFrame(Frame::Rows, numbers({1, 1}) + "xy");
        beSilent();
    } else if (table == "no UTF-8") {
        sayColumn();
        sayFrame(Frame::Rows, numbers({1, 2}) + "\xB4\xF2");
        beSilent();
    } else if (table == "a sign in two cells") {
        sayColumn();
        sayFrame(Frame::Rows, numbers({2, 1, 2}) + "\xE7\xBA\xB8");
        beSilent();
    } else if (table == "rows without columns") {
        sayRow();
        beSilent();
    } else if (table == "rows of no column") {
        sayFrame(Frame::Columns, numbers({0}));
        sayFrame(Frame::Rows, numbers({2000}));
        beSilent();
    } else if (table == "end without columns") {
        sayFrame(Frame::End, {});
        beSilent();
    } else if (table == "unknown frame") {
        sayFrame(77, "x");
        beSilent();
    } else if (table == "garbage") {
        std::string noise;
        for (unsigned i = 0; i < 100000; ++i)
            noise += char(i * 2654435761U >> 13);
        say(noise.data(), noise.size());
        beSilent();
    } else if (table == "long refusal") {
        sayFrame(Frame::Refused, "<b>" + std::string(1000000, 'x') + "\n\n");
        beSilent();
    }
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
