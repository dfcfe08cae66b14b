/// @file The tables of a vault.
#pragma once

namespace plm_vault {

/// Stands in every vault, so that a program refuses one that it does not know. The end of kSchema sets it.
inline constexpr int kSchemaVersion = 1;

/// Kinds and states are the numbers of the enumerators in records.h.
inline constexpr const char* kSchema = R"(
CREATE TABLE users (name TEXT PRIMARY KEY, full_name TEXT NOT NULL);
CREATE TABLE log_ins (token TEXT PRIMARY KEY, user TEXT NOT NULL REFERENCES users(name));
CREATE TABLE series (prefix TEXT PRIMARY KEY, digits INTEGER NOT NULL, next INTEGER NOT NULL DEFAULT 1);
INSERT INTO series (prefix, digits) VALUES ('A-', 5), ('C-', 4), ('D-', 5), ('M-', 6), ('P-', 5), ('T-', 4);

CREATE TABLE items (
  id INTEGER PRIMARY KEY, number TEXT NOT NULL UNIQUE, name TEXT NOT NULL,
  file_name TEXT NOT NULL UNIQUE, file_key TEXT NOT NULL UNIQUE,
  kind INTEGER NOT NULL, state INTEGER NOT NULL DEFAULT 0, revision INTEGER NOT NULL DEFAULT 0,
  checked_out_by TEXT REFERENCES users(name), checked_out_at TEXT);
CREATE TABLE revisions (
  item INTEGER NOT NULL REFERENCES items(id), revision INTEGER NOT NULL, author TEXT NOT NULL REFERENCES users(name),
  at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M', 'now', 'localtime')), comment TEXT NOT NULL,
  PRIMARY KEY (item, revision));
CREATE TABLE uses (
  item INTEGER NOT NULL REFERENCES items(id), used INTEGER NOT NULL REFERENCES items(id),
  PRIMARY KEY (item, used));
CREATE TABLE changes (
  id INTEGER PRIMARY KEY, number TEXT NOT NULL UNIQUE, title TEXT NOT NULL,
  author TEXT NOT NULL REFERENCES users(name));
CREATE TABLE change_items (
  change INTEGER NOT NULL REFERENCES changes(id), item INTEGER NOT NULL REFERENCES items(id),
  PRIMARY KEY (change, item));

CREATE TABLE materials (
  id INTEGER PRIMARY KEY, number TEXT NOT NULL UNIQUE, name TEXT NOT NULL, "group" TEXT NOT NULL,
  is_temporary INTEGER NOT NULL DEFAULT 1, created_by TEXT NOT NULL REFERENCES users(name),
  created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M', 'now', 'localtime')));
CREATE TABLE material_properties (
  material INTEGER NOT NULL REFERENCES materials(id), position INTEGER NOT NULL, name TEXT NOT NULL,
  value TEXT NOT NULL, PRIMARY KEY (material, position));

CREATE TABLE tasks (
  id INTEGER PRIMARY KEY, number TEXT NOT NULL UNIQUE, title TEXT NOT NULL, workflow TEXT NOT NULL,
  state INTEGER NOT NULL DEFAULT 0, assignee TEXT NOT NULL REFERENCES users(name),
  created_by TEXT NOT NULL REFERENCES users(name),
  created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M', 'now', 'localtime')));
CREATE TABLE task_items (
  task INTEGER NOT NULL REFERENCES tasks(id), item INTEGER NOT NULL REFERENCES items(id),
  PRIMARY KEY (task, item));

PRAGMA user_version = 1;
)";

}  // namespace plm_vault
