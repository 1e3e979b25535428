# The terminal front end (gc40 --headless): a second view of the logging
# session, with Qt's core and serial port modules only.
list(APPEND GC40_CORE_FILES
  headless/terminal_keys.cpp headless/terminal_keys.h
  headless/terminal_prompt.cpp headless/terminal_prompt.h
  headless/terminal_status.cpp headless/terminal_status.h
  headless/terminal_texts.cpp headless/terminal_texts.h
)
list(APPEND GC40_QT_FILES
  headless/terminal.cpp headless/terminal.h
  headless/terminal_view.cpp headless/terminal_view.h
  headless/headless_run.cpp headless/headless_run.h
)
