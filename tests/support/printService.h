#pragma once

#include <QByteArray>
#include <QString>

#include <arpa/inet.h>
#include <atomic>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

/// The print service of a machine with one printer, "front", that takes or refuses every job. Programs find
/// it by the variable CUPS_SERVER.
class PrintService {
public:
    enum class Jobs { Taken, Refused };

    explicit PrintService(Jobs jobs)
        : m_jobs(jobs)
        , m_listener(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bind(m_listener, reinterpret_cast<sockaddr*>(&address), sizeof address);
        listen(m_listener, 8);
        socklen_t size = sizeof address;
        getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
        m_port = ntohs(address.sin_port);
        m_thread = std::thread([this] { serve(); });
    }
    ~PrintService() {
        m_ending = true;
        shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        close(m_listener);
    }

    QString server() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }
    /// How many jobs were asked for, and the title of the last one.
    int jobs() const { return m_asked; }
    const QByteArray& title() const { return m_title; }

private:
    static constexpr int kCreateJob = 0x0005;
    static constexpr int kSendDocument = 0x0006;
    static constexpr int kNotAcceptingJobs = 0x0506;

    void serve() {
        while (!m_ending) {
            const int client = accept(m_listener, nullptr, nullptr);
            if (client < 0)
                continue;
            timeval patience{5, 0};
            setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
            answer(client);
            close(client);
        }
    }

    static bool receive(int client, QByteArray& data) {
        char buffer[65536];
        const ssize_t got = recv(client, buffer, sizeof buffer, 0);
        if (got > 0)
            data.append(buffer, got);
        return got > 0;
    }
    static void write(int client, const QByteArray& data) {
        [[maybe_unused]] const ssize_t sent =
            send(client, data.constData(), size_t(data.size()), MSG_NOSIGNAL);
    }

    /// One request, and the answer behind which the connection closes.
    void answer(int client) {
        QByteArray data;
        while (!data.contains("\r\n\r\n"))
            if (!receive(client, data))
                return;
        const QByteArray head = data.left(data.indexOf("\r\n\r\n"));
        QByteArray body = data.mid(head.size() + 4);
        if (head.toLower().contains("expect: 100-continue"))
            write(client, "HTTP/1.1 100 Continue\r\n\r\n");
        if (head.startsWith("GET"))
            return reply(client, "application/vnd.cups-ppd", ppd());
        body = whole(client, head, body);
        if (body.size() >= 8)
            reply(client, "application/ipp", ipp(body));
    }

    static QByteArray whole(int client, const QByteArray& head, QByteArray body) {
        const qsizetype length = head.toLower().indexOf("content-length: ");
        if (length >= 0) {
            const int wanted = head.mid(length + 16).split('\r').first().toInt();
            while (body.size() < wanted && receive(client, body)) {
            }
            return body;
        }
        while (!body.endsWith("0\r\n\r\n") && receive(client, body)) {
        }
        QByteArray joined;
        for (;;) {
            const qsizetype line = body.indexOf("\r\n");
            const int size = body.left(line).toInt(nullptr, 16);
            if (line < 0 || size == 0)
                return joined;
            joined += body.mid(line + 2, size);
            body.remove(0, line + 2 + size + 2);
        }
    }

    static void reply(int client, const QByteArray& type, const QByteArray& body) {
        write(client, "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Type: " + type +
                          "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
    }

    static QByteArray number(int value, int bytes) {
        QByteArray made;
        for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8)
            made += char(value >> shift);
        return made;
    }
    static QByteArray attribute(int tag, const QByteArray& name, const QByteArray& value) {
        return number(tag, 1) + number(int(name.size()), 2) + name + number(int(value.size()), 2) + value;
    }
    static QByteArray text(int tag, const QByteArray& name, const QByteArray& value) {
        return attribute(tag, name, value);
    }
    static QByteArray integer(int tag, const QByteArray& name, int value) {
        return attribute(tag, name, number(value, 4));
    }

    QByteArray ipp(const QByteArray& request) {
        const int operation = quint8(request[2]) << 8 | quint8(request[3]);
        const bool isJob = operation == kCreateJob || operation == kSendDocument;
        const bool refused = isJob && m_jobs == Jobs::Refused;
        if (operation == kCreateJob) {
            ++m_asked;
            const qsizetype name = request.indexOf("job-name");
            const int size = name < 0 ? 0 : quint8(request[name + 8]) << 8 | quint8(request[name + 9]);
            m_title = request.mid(name + 10, size);
        }
        QByteArray answer =
            number(0x0200, 2) + number(refused ? kNotAcceptingJobs : 0, 2) + request.mid(4, 4);
        answer += number(1, 1) + text(0x47, "attributes-charset", "utf-8") +
                  text(0x48, "attributes-natural-language", "en");
        if (refused)
            answer += text(0x41, "status-message", "not accepting jobs");
        answer += isJob ? (refused ? QByteArray() : job()) : printer();
        return answer + number(3, 1);
    }
    static QByteArray job() {
        return number(2, 1) + integer(0x21, "job-id", 7) + integer(0x23, "job-state", 3) +
               text(0x45, "job-uri", "ipp://localhost/jobs/7");
    }
    static QByteArray printer() {
        return number(4, 1) + text(0x42, "printer-name", "front") +
               text(0x45, "printer-uri-supported", "ipp://localhost/printers/front") +
               integer(0x23, "printer-type", 4) + integer(0x23, "printer-state", 3) +
               text(0x41, "printer-make-and-model", "Front") + text(0x41, "printer-info", "front");
    }
    static QByteArray ppd() {
        return "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: "
               "English\n"
               "*LanguageEncoding: ISOLatin1\n*PCFileName: \"FRONT.PPD\"\n*Manufacturer: \"Front\"\n"
               "*Product: \"(Front)\"\n*ModelName: \"Front\"\n*ShortNickName: \"Front\"\n*NickName: "
               "\"Front\"\n"
               "*PSVersion: \"(3010.000) 0\"\n*LanguageLevel: \"3\"\n*ColorDevice: True\n*DefaultColorSpace: "
               "RGB\n"
               "*OpenUI *PageSize/Media Size: PickOne\n*OrderDependency: 10 AnySetup *PageSize\n"
               "*DefaultPageSize: A4\n*PageSize A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n"
               "*CloseUI: *PageSize\n"
               "*OpenUI *PageRegion/Media Size: PickOne\n*OrderDependency: 10 AnySetup *PageRegion\n"
               "*DefaultPageRegion: A4\n*PageRegion A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n"
               "*CloseUI: *PageRegion\n*DefaultImageableArea: A4\n*ImageableArea A4/A4: \"0 0 595 842\"\n"
               "*DefaultPaperDimension: A4\n*PaperDimension A4/A4: \"595 842\"\n";
    }

    Jobs m_jobs;
    int m_listener;
    int m_port = 0;
    std::atomic<bool> m_ending = false;
    std::atomic<int> m_asked = 0;
    QByteArray m_title;
    std::thread m_thread;
};
