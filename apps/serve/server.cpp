#include "apps/serve/server.h"

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "apps/serve/access_log.h"
#include "apps/serve/reply.h"
#include "apps/serve/service.h"
#include "kit/request/error.h"

namespace vexel::serve {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using boost::system::error_code;
using tcp = asio::ip::tcp;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostHead = 8192;
constexpr std::size_t kMostBuffered = 2 * kMostHead;
constexpr std::size_t kPiece = 64 << 10;  // sent within one patience
constexpr std::chrono::seconds kPatience{10};
constexpr std::chrono::seconds kFarewell{1};
constexpr std::size_t kMostIgnored = 1 << 20;  // of what comes behind a refused request
constexpr std::chrono::milliseconds kBeforeNextTry{100};
constexpr std::chrono::milliseconds kLastMoment{800};
constexpr rlim_t kSpareFiles = 64;  // beside connections

std::string Text(beast::string_view view) { return {view.data(), view.size()}; }

class Connection;

// What all connections share.
class Hub {
 public:
  Hub(asio::io_context& context, const Options& options, Catalog& catalog, Printer printer)
      : options_(options),
        service_(options, catalog, std::move(printer),
                 [&context](std::function<void()> act) { asio::post(context, std::move(act)); }) {}

  Service& GetService() { return service_; }
  bool IsEnding() const { return isEnding_; }

  // Makes room for one more connection if that can be: whoever asks for nothing, for the longest
  // time, has to go.
  bool HasRoom();

  void Enter(Connection* connection) {
    open_.insert(connection);
    service_.SetConnections(open_.size());
  }
  void Leave(Connection* connection) {
    open_.erase(connection);
    service_.SetConnections(open_.size());
    if (isEnding_ && open_.empty() && whenEmpty_) whenEmpty_();
  }

  // Lets go of connections that wait for a request, and of the others when they have their answers.
  void End(std::function<void()> whenEmpty);

  void Record(std::string_view kind, const LogEntry& entry) {
    service_.GetMetrics().CountAnswer(kind, entry.status, entry.duration);
    if (options_.log == LogForm::none) return;
    const std::string line = LogLine(entry, options_.log);
    std::fwrite(line.data(), 1, line.size(), stderr);
  }

 private:
  const Options& options_;
  std::unordered_set<Connection*> open_;
  std::function<void()> whenEmpty_;
  bool isEnding_ = false;
  Service service_;
};

// One connection. Lives as long as something is awaited of it.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
  Connection(tcp::socket socket, Hub& hub) : stream_(std::move(socket)), hub_(hub) {
    error_code error;
    stream_.socket().set_option(tcp::no_delay(true), error);
    const tcp::endpoint client = stream_.socket().remote_endpoint(error);
    if (!error) client_ = client.address().to_string();
    hub_.Enter(this);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { hub_.Leave(this); }

  void Read() {
    if (hub_.IsEnding()) return;
    parser_.emplace();
    parser_->header_limit(kMostHead);
    parser_->body_limit(0);
    isIdle_ = true;
    begun_ = Clock::now();
    stream_.expires_after(kPatience);
    http::async_read_header(stream_, buffer_, *parser_,
                            [self = shared_from_this()](error_code error, std::size_t) {
                              self->isIdle_ = false;
                              self->OnHead(error);
                            });
  }

  // Sends one answer and no more.
  void Turn(Status status) {
    begun_ = Clock::now();
    asking_ = {};
    asking_.keepsAlive = false;
    Send(hub_.GetService().Refuse(status));
  }

  bool IsIdle() const { return isIdle_; }
  Clock::time_point IdleSince() const { return begun_; }

  void Close() {
    isIdle_ = false;
    error_code ignored;
    stream_.socket().close(ignored);
  }

 private:
  void OnHead(error_code error) {
    begun_ = Clock::now();
    if (error) return Fail(error);
    const auto& head = parser_->get();
    asking_.method = Text(head.method_string());
    asking_.target = Text(head.target());
    asking_.host = head.count(http::field::host) == 1 ? Text(head[http::field::host]) : "";
    asking_.accepted = Text(head[http::field::accept_encoding]);
    asking_.known = Text(head[http::field::if_none_match]);
    asking_.keepsAlive = parser_->keep_alive() && !hub_.IsEnding();
    const bool isLooking = head.method() == http::verb::get || head.method() == http::verb::head;
    if (!isLooking || parser_->chunked() || parser_->content_length().value_or(0) > 0) {
      // What comes behind the head is not read, and so no request can follow it.
      asking_.keepsAlive = false;
      if (isLooking) return Send(hub_.GetService().Refuse(Status::bodyTooLarge));
    }
    Ask();
  }

  void Ask() {
    isAnswered_ = false;
    ticket_ = hub_.GetService().Ask(asking_, [self = shared_from_this()](AnswerPtr answer) {
      self->isAnswered_ = true;
      self->ticket_ = nullptr;
      error_code ignored;
      self->stream_.socket().cancel(ignored);
      self->Send(std::move(answer));
    });
    if (isAnswered_) {
      ticket_ = nullptr;
    } else {
      Watch();
    }
  }

  // A client that goes away no longer wants its answer. One that sends its next request already is
  // still there.
  void Watch() {
    stream_.expires_never();
    stream_.socket().async_wait(
        tcp::socket::wait_read, [self = shared_from_this()](error_code error) {
          if (error || self->ticket_ == nullptr) return;
          char next = 0;
          const ssize_t count =
              ::recv(self->stream_.socket().native_handle(), &next, 1, MSG_PEEK | MSG_DONTWAIT);
          if (count == 0) self->ticket_->Leave();
        });
  }

  void Fail(error_code error) {
    if (error == http::error::header_limit || error == http::error::buffer_overflow) {
      return Turn(HasLine() ? Status::headTooLarge : Status::targetTooLong);
    }
    if (error == http::error::body_limit) return Turn(Status::bodyTooLarge);
    if (error == http::error::bad_version) return Turn(Status::wrongVersion);
    // The end of the stream, a reset, a timeout: nobody listens any more.
    const bool isSyntax =
        error.category() == make_error_code(http::error::bad_line_ending).category() &&
        error != http::error::end_of_stream;
    if (isSyntax) Turn(Status::badRequest);
  }

  // Whether the first line of the request has come whole.
  bool HasLine() const {
    const auto bytes = buffer_.cdata();
    const std::string_view text(static_cast<const char*>(bytes.data()), bytes.size());
    return !parser_->get().target().empty() || text.find('\n') != std::string_view::npos;
  }

  void Send(AnswerPtr answer) {
    answer_ = std::move(answer);
    if (hub_.IsEnding()) asking_.keepsAlive = false;
    reply_ = ReplyTo(asking_, *answer_);
    headSent_ = 0;
    bodySent_ = 0;
    SendPiece();
  }

  void SendPiece() {
    const std::string_view head = std::string_view(reply_.head).substr(headSent_);
    const std::string_view body = reply_.body.substr(bodySent_, kPiece);
    const std::array<asio::const_buffer, 2> buffers{asio::buffer(head.data(), head.size()),
                                                    asio::buffer(body.data(), body.size())};
    headSent_ = reply_.head.size();
    bodySent_ += body.size();
    stream_.expires_after(kPatience);
    asio::async_write(stream_, buffers, [self = shared_from_this()](error_code error, std::size_t) {
      self->OnSent(error);
    });
  }

  void OnSent(error_code error) {
    if (!error && bodySent_ < reply_.body.size()) return SendPiece();
    const auto duration =
        std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begun_);
    hub_.Record(answer_->kind, {std::chrono::system_clock::now(), client_, asking_.method,
                                asking_.target, reply_.status, bodySent_, duration});
    answer_ = nullptr;
    if (error) return;
    if (asking_.keepsAlive) return Read();
    stream_.socket().shutdown(tcp::socket::shutdown_send, error);
    stream_.expires_after(kFarewell);
    Ignore(0);
  }

  // To close with bytes unread would take the answer back from the client.
  void Ignore(std::size_t ignored) {
    buffer_.clear();
    stream_.async_read_some(buffer_.prepare(kMostHead), [self = shared_from_this(), ignored](
                                                            error_code error, std::size_t count) {
      if (!error && ignored < kMostIgnored) self->Ignore(ignored + count);
    });
  }

  beast::tcp_stream stream_;
  Hub& hub_;
  std::string client_ = "-";
  beast::flat_buffer buffer_{kMostBuffered};
  std::optional<http::request_parser<http::empty_body>> parser_;
  bool isIdle_ = false;
  bool isAnswered_ = false;
  Asking asking_;
  Service::TicketPtr ticket_;
  Clock::time_point begun_;
  AnswerPtr answer_;
  Reply reply_;
  std::size_t headSent_ = 0;
  std::size_t bodySent_ = 0;
};

void Hub::End(std::function<void()> whenEmpty) {
  isEnding_ = true;
  whenEmpty_ = std::move(whenEmpty);
  if (open_.empty()) return whenEmpty_();
  for (Connection* connection : open_) {
    if (connection->IsIdle()) connection->Close();
  }
}

bool Hub::HasRoom() {
  if (open_.size() < options_.connections) return true;
  Connection* longest = nullptr;
  for (Connection* connection : open_) {
    const bool isLonger = longest == nullptr || connection->IdleSince() < longest->IdleSince();
    if (connection->IsIdle() && isLonger) longest = connection;
  }
  if (longest == nullptr) return false;
  longest->Close();
  return true;
}

class Listening {
 public:
  Listening(asio::io_context& context, const Options& options, Hub& hub)
      : acceptor_(context), again_(context), hub_(hub) {
    error_code error;
    const tcp::endpoint endpoint(asio::ip::make_address(options.host),
                                 static_cast<unsigned short>(options.port));
    acceptor_.open(endpoint.protocol(), error);
    if (!error) acceptor_.set_option(tcp::acceptor::reuse_address(true), error);
    if (!error) acceptor_.bind(endpoint, error);
    if (!error) acceptor_.listen(asio::socket_base::max_listen_connections, error);
    if (error) {
      throw Failed("port " + std::to_string(options.port) + " of " + options.host +
                   " cannot be had: " + error.message());
    }
  }

  std::string Address(const std::string& base) const {
    const tcp::endpoint endpoint = acceptor_.local_endpoint();
    const std::string host = endpoint.address().to_string();
    return "http://" + (endpoint.address().is_v6() ? '[' + host + ']' : host) + ':' +
           std::to_string(endpoint.port()) + base + '/';
  }

  void Accept() {
    acceptor_.async_accept([this](error_code error, tcp::socket socket) {
      if (!acceptor_.is_open()) return;
      if (error) return AcceptLater();
      Welcome(std::move(socket));
      Accept();
    });
  }

  void Close() {
    error_code ignored;
    acceptor_.close(ignored);
    again_.cancel(ignored);
  }

 private:
  void Welcome(tcp::socket socket) {
    const bool hasRoom = hub_.HasRoom();
    const auto connection = std::make_shared<Connection>(std::move(socket), hub_);
    if (hasRoom) return connection->Read();
    ++hub_.GetService().GetMetrics().refusedConnections;
    connection->Turn(Status::busy);
  }

  // No descriptor is left, perhaps: one will come back.
  void AcceptLater() {
    again_.expires_after(kBeforeNextTry);
    again_.async_wait([this](error_code error) {
      if (!error && acceptor_.is_open()) Accept();
    });
  }

  tcp::acceptor acceptor_;
  asio::steady_timer again_;
  Hub& hub_;
};

[[noreturn]] void LeaveAtOnce() {
  std::fflush(nullptr);
  std::_Exit(EXIT_SUCCESS);
}

// Each connection takes a descriptor.
void AllowFiles(std::size_t connections) {
  rlimit limit{};
  const rlim_t wanted = connections + kSpareFiles;
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= wanted) return;
  limit.rlim_cur = std::min(wanted, limit.rlim_max);
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace

void Serve(const Options& options, Catalog& catalog, Printer printer,
           const std::function<void(const std::string& address)>& started) {
  std::signal(SIGPIPE, SIG_IGN);
  AllowFiles(options.connections);
  constexpr int kOneThread = 1;
  asio::io_context context(kOneThread);
  asio::signal_set signals(context, SIGINT, SIGTERM);
  asio::steady_timer lastMoment(context);
  Hub hub(context, options, catalog, std::move(printer));
  Listening listening(context, options, hub);
  signals.async_wait([&](error_code error, int) {
    if (error) return;
    listening.Close();
    lastMoment.expires_after(kLastMoment);
    lastMoment.async_wait([](error_code waited) {
      if (!waited) LeaveAtOnce();
    });
    hub.End([&context] { context.stop(); });
  });
  listening.Accept();
  started(listening.Address(options.base));
  context.run();
  if (hub.GetService().IsIdle()) return;
  // Nobody waits for what is still being drawn.
  LeaveAtOnce();
}

}  // namespace vexel::serve
