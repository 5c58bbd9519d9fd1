#include "import/tableServer.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

void writeAll(int out, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t step = ::write(out, bytes, count);
        if (step < 0 && errno == EINTR)
            continue;
        if (step <= 0)
            std::_Exit(1); // nobody listens any more
        bytes += step;
        count -= std::size_t(step);
    }
}

void appendNumber(std::string& bytes, quint32 number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void sendFrame(int out, Frame::Kind kind, const std::string& content = {}) {
    const Frame::Head head{kind, quint32(content.size())};
    writeAll(out, reinterpret_cast<const char*>(&head), sizeof head);
    writeAll(out, content.data(), content.size());
}

std::string textsFrame(const QStringList& texts) {
    std::string content;
    appendNumber(content, quint32(texts.size()));
    for (const QString& text : texts) {
        const std::string utf8 = text.toStdString();
        appendNumber(content, quint32(utf8.size()));
        content += utf8;
    }
    return content;
}

/// Sends the rows in blocks.
class Sender : public RowSink {
public:
    explicit Sender(int out)
        : m_out(out) {}

    void begin(const QStringList& columns) override {
        m_width = std::size_t(columns.size());
        sendFrame(m_out, Frame::Columns, textsFrame(columns));
    }
    void text(std::string_view text) override {
        m_texts.append(text);
        put(quint32(text.size()));
    }
    void null() override { put(Frame::Null); }
    void alive() override { sendFrame(m_out, Frame::Alive); }
    void end() {
        sendBlock();
        sendFrame(m_out, Frame::End);
    }

private:
    void put(quint32 length) {
        appendNumber(m_lengths, length);
        if (++m_column < m_width)
            return;
        m_column = 0;
        if (++m_rows == Frame::BlockRows || m_texts.size() >= Frame::BlockBytes)
            sendBlock();
    }
    void sendBlock() {
        if (m_rows == 0)
            return;
        const quint32 rows = quint32(m_rows);
        const std::size_t length = sizeof rows + m_lengths.size() + m_texts.size();
        if (length > Frame::LongestFrame)
            throw ImportError(QStringLiteral("有一行的内容太长，不能读取。"));
        const Frame::Head head{Frame::Rows, quint32(length)};
        writeAll(m_out, reinterpret_cast<const char*>(&head), sizeof head);
        writeAll(m_out, reinterpret_cast<const char*>(&rows), sizeof rows);
        writeAll(m_out, m_lengths.data(), m_lengths.size());
        writeAll(m_out, m_texts.data(), m_texts.size());
        m_lengths.clear();
        m_texts.clear();
        m_rows = 0;
    }

    int m_out;
    std::size_t m_width = 0;
    std::size_t m_column = 0;
    std::size_t m_rows = 0; // in the block
    std::string m_lengths;
    std::string m_texts;
};

/// The next line without its end; false where none comes.
bool readLine(int in, std::string& line) {
    line.clear();
    for (char sign = 0; ::read(in, &sign, 1) == 1; line += sign)
        if (sign == '\n')
            return true;
    return false;
}

} // namespace

void serveTables(const std::function<std::unique_ptr<TableReader>()>& open, int in, int out) {
    try {
        const std::unique_ptr<TableReader> reader = open();
        sendFrame(out, Frame::Tables, textsFrame(reader->tables()));
        for (std::string name; readLine(in, name);) {
            Sender sender(out);
            reader->read(QString::fromStdString(name), sender);
            sender.end();
        }
    } catch (const ImportError& error) {
        sendFrame(out, Frame::Refused, error.text().toStdString());
    } catch (const std::exception&) {
        // Its end tells: too little memory for what the file asks for.
    }
}
