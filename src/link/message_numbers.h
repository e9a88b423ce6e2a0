#pragma once

/// Numbers that cross the wire: tool types and message tags.

/// Kinds of tools that the Postmaster connects. The value 6 and all others are unknown.
enum ToolType : int {
  NELKV = 1,     ///< the tester
  NELKVUI = 2,   ///< this user interface
  NELGATE = 3,   ///< a gateway tool
  NELMPM = 4,    ///< the Postmaster itself
  NELLINK = 5,   ///< the link to the surrounding tool environment: help, Organizer
  EXTERNAL = 7,  ///< an external tool
};

/// First word of a frame.
enum FrameKind : int {
  kFrameDirected = 0,
  kFrameUndirected = 1,
};

/// Message tags. 1000 to 1013 and 2000 to 2019 are the tester's dialogue, 7000 to 8002 and 13000
/// to 13001 the Postmaster's, 9000 to 9003 tool status, 10004 to 11006 the tool environment's.
enum MessageTag : int {
  MSG_UI_OK = 1000,
  MSG_UI_NOT_OK = 1001,
  MSG_UI_COMMAND = 1002,
  MSG_UI_CANCEL = 1003,
  MSG_UI_STRING = 1004,
  MSG_UI_VALUE = 1005,
  MSG_UI_LIST_CHOICE = 1006,
  MSG_UI_EXIT = 1007,
  MSG_UI_FILE = 1008,
  MSG_UI_BITS = 1009,
  MSG_UI_DIRECTORY = 1010,
  MSG_UI_ACK = 1011,
  MSG_UI_FIND = 1012,
  MSG_UI_SIGNAL_PARAM = 1013,

  MSG_T_TEXT = 2000,
  MSG_T_QUESTION = 2001,
  MSG_T_PROMPT = 2002,
  MSG_T_ASK_STRING = 2003,
  MSG_T_ASK_INTEGER = 2004,
  MSG_T_ASK_LIST = 2005,
  MSG_T_EXIT_CONFIRM = 2006,
  MSG_T_EXIT = 2007,
  MSG_T_TITLE = 2008,
  MSG_T_ASK_FILE = 2009,
  MSG_T_ASK_BITS = 2010,
  MSG_T_ASK_DIRECTORY = 2011,
  MSG_T_SYSTEM_OPENED = 2012,
  MSG_T_ERROR_BOX = 2013,
  MSG_T_BUSY = 2014,
  MSG_T_IDLE = 2015,
  MSG_T_WARNING_BOX = 2016,
  MSG_T_FIND = 2017,
  MSG_T_ASK_SIGNAL_PARAM = 2018,
  MSG_T_ASK_RANGE = 2019,

  MSG_CONNECT = 7000,
  MSG_DISCONNECT = 7001,
  MSG_SHUTDOWN_ACK = 7002,
  MSG_CONNECT_OK = 8000,
  MSG_CONNECT_DENIED = 8001,
  MSG_TOOL_LEFT = 8002,

  MSG_TOOL_STARTED = 9000,
  MSG_TOOL_READY = 9001,
  MSG_START_POLL_TIMER = 9002,
  MSG_TOOL_ACTIVE = 9003,

  MSG_HELP_REQUEST = 10004,
  MSG_SHOW_ORGANIZER = 10007,
  MSG_LINK_IDENT = 11004,
  MSG_LINK_WARNING_BOX = 11006,

  MSG_SHUTDOWN = 13000,
  MSG_SHUTDOWN_NOW = 13001,
};
