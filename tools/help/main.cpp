// A tool of the Postmaster that answers requests for help: it shows the installed pages in a window
// of their own, or says in the log where they are.

#include "command_options.h"
#include "help/pages.h"
#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "postmaster/processes.h"
#include "support/version.h"
#include "tester_link/tester_tool.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace {

/// Name of the tester that the pages are to be about; empty when nobody said.
std::string testerName;

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

help::Surroundings surroundings() {
  std::error_code error;
  const std::filesystem::path own =
      std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  const std::string path = variable("PATH");
  return {(own / NEL_DOCUMENTS_FROM_BIN).lexically_normal().string(),
          (own / NEL_MANUALS_FROM_BIN).lexically_normal().string(),
          [](const std::string& file) { return access(file.c_str(), R_OK) == 0; },
          [=](const std::string& program) {
            return postmaster::findProgram(program, own.string(),
                                           path.empty() ? "/usr/local/bin:/usr/bin:/bin" : path);
          },
          variable};
}

// Runs a program that nobody waits for. The link takes the end of a child for the end of its
// connection, so the one child that there is has ended before the link looks again.
void runDetached(const std::vector<std::string>& words) {
  struct sigaction usual {};
  struct sigaction ofLink {};
  usual.sa_handler = SIG_DFL;
  sigaction(SIGCHLD, &usual, &ofLink);
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) {
    arguments.push_back(const_cast<char*>(word.c_str()));
  }
  arguments.push_back(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    setsid();
    close_range(STDERR_FILENO + 1, ~0U, 0);
    if (fork() == 0) {
      execv(arguments.front(), arguments.data());
    }
    _exit(0);
  }
  waitpid(child, nullptr, 0);
  sigaction(SIGCHLD, &ofLink, nullptr);
}

void showPage(const char* topic) {
  const help::Surroundings here = surroundings();
  const help::Page& page = help::pageOf(topic, testerName);
  const std::vector<std::string> viewer = help::viewerOf(page, here);
  if (!viewer.empty()) {
    runDetached(viewer);
    return;
  }
  const std::string line = help::whereIs(page, here);
  sendMessage(MessageDirection::kReceivedByUi, NELKVUI, MSG_T_TEXT,
              ToolMessage().setText(0, line.c_str()));
}

void handleMessage(int /*sender*/, int tag, int length, const char* payload) {
  ToolMessage message;
  if (tag == MSG_HELP_REQUEST &&
      DecodeMessage(tag, payload, length, &message, MessageDirection::kSentByUi) == kDecodeOk) {
    showPage(message.text(0));
    FreeMessage(tag, &message, MessageDirection::kSentByUi);
  }
}

int run() {
  setMessageHandler(handleMessage);
  if (ToolInit(NELLINK) != 0) {
    std::fputs("nel-help: no connection to the Postmaster, which must have started this program.\n",
               stderr);
    return EXIT_FAILURE;
  }
  while (true) {
    int tag = 0;
    while ((tag = ToolReceive(kReceivePoll)) > 0) {
    }
    if (tag < 0 || tester_link::hasHungUp()) {
      break;
    }
    pollfd entry{g_ToolSocket, POLLIN, 0};
    poll(&entry, 1, 1000);
  }
  ToolExit(NELLINK);
  return EXIT_SUCCESS;
}

/// The exit status of the options alone, or nothing when the tool is to run.
std::optional<int> answerOptions(int argc, char** argv) {
  CLI::App app(
      "Shows the pages that the window's Help menu asks for. Started by the Postmaster as a tool.",
      "nel-help");
  app.footer(
      "Exit status: 0 when the Postmaster has ended, 1 when none has started it, 2 for a wrong\n"
      "command line.");
  app.add_option("--tester", testerName,
                 "Show the pages about the tester NAME where there are such")
      ->type_name("NAME");
  app.set_version_flag("--version", std::string("nel-help ") + kProductVersion);
  return exitOfOptions(app, argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::optional<int> status = answerOptions(argc, argv);
    return status ? *status : run();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "nel-help: %s\n", error.what());
    return EXIT_FAILURE;
  }
}
