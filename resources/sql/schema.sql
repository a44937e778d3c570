-- The whole schema, version 3. Every statement leaves an existing database as it is.
-- Amounts are fen, dates "yyyy-MM-dd", time stamps local "yyyy-MM-dd HH:mm:ss", enumerations
-- lower-case codes. What SQLite can refuse it refuses here: the last line of defence.
PRAGMA journal_mode = WAL;
PRAGMA foreign_keys = ON;
PRAGMA encoding = 'UTF-8';

CREATE TABLE IF NOT EXISTS company_profile (
    id                      INTEGER PRIMARY KEY CHECK (id = 1),
    company_name            TEXT NOT NULL DEFAULT '',
    credit_code             TEXT,
    shareholder_name        TEXT NOT NULL DEFAULT '',
    bank_name               TEXT,
    bank_account            TEXT,
    address                 TEXT,
    phone                   TEXT,
    large_amount_fen        INTEGER NOT NULL DEFAULT 5000000 CHECK (large_amount_fen >= 0),
    frequent_window_days    INTEGER NOT NULL DEFAULT 30 CHECK (frequent_window_days > 0),
    frequent_count          INTEGER NOT NULL DEFAULT 3 CHECK (frequent_count > 0),
    password_enabled        INTEGER NOT NULL DEFAULT 0 CHECK (password_enabled IN (0,1)),
    password_hash           TEXT,
    password_salt           TEXT,
    disclaimer_version      TEXT,
    disclaimer_confirmed_at TEXT,
    last_backup_at          TEXT,
    theme_mode              TEXT NOT NULL DEFAULT 'light',
    created_at              TEXT NOT NULL DEFAULT (datetime('now','localtime')),
    updated_at              TEXT NOT NULL DEFAULT (datetime('now','localtime'))
);

CREATE TABLE IF NOT EXISTS projects (
    id          INTEGER PRIMARY KEY AUTOINCREMENT,
    name        TEXT NOT NULL,
    code        TEXT NOT NULL UNIQUE,
    client_name TEXT NOT NULL,
    status      TEXT NOT NULL DEFAULT 'planning'
                CHECK (status IN ('planning','ongoing','completed','archived')),
    start_date  TEXT,
    end_date    TEXT,
    budget_fen  INTEGER CHECK (budget_fen IS NULL OR budget_fen >= 0),
    manager     TEXT,
    note        TEXT,
    created_at  TEXT NOT NULL DEFAULT (datetime('now','localtime')),
    updated_at  TEXT NOT NULL DEFAULT (datetime('now','localtime'))
);

CREATE TABLE IF NOT EXISTS contracts (
    id         INTEGER PRIMARY KEY AUTOINCREMENT,
    project_id INTEGER NOT NULL,
    name       TEXT NOT NULL,
    code       TEXT NOT NULL UNIQUE,
    party_b    TEXT NOT NULL,
    amount_fen INTEGER NOT NULL DEFAULT 0 CHECK (amount_fen >= 0),
    sign_date  TEXT NOT NULL,
    status     TEXT NOT NULL DEFAULT 'active'
               CHECK (status IN ('active','completed','terminated')),
    note       TEXT,
    created_at TEXT NOT NULL DEFAULT (datetime('now','localtime')),
    updated_at TEXT NOT NULL DEFAULT (datetime('now','localtime')),
    FOREIGN KEY (project_id) REFERENCES projects(id) ON DELETE CASCADE
);

CREATE TABLE IF NOT EXISTS transactions (
    id                        INTEGER PRIMARY KEY AUTOINCREMENT,
    trans_date                TEXT NOT NULL,
    summary                   TEXT NOT NULL,
    direction                 TEXT NOT NULL CHECK (direction IN ('in','out')),
    amount_fen                INTEGER NOT NULL CHECK (amount_fen > 0),
    owner_account_type        TEXT NOT NULL CHECK (owner_account_type IN ('company','private')),
    counterparty_name         TEXT NOT NULL,
    counterparty_account_type TEXT NOT NULL DEFAULT 'unknown'
                              CHECK (counterparty_account_type IN ('company','private','unknown')),
    category                  TEXT NOT NULL
                              CHECK (category IN ('business_income','business_expense','salary',
                                                  'expense_reimburse','shareholder_in',
                                                  'shareholder_out','tax_fee','other')),
    project_id                INTEGER,
    note                      TEXT,
    risk_level                TEXT NOT NULL DEFAULT 'normal'
                              CHECK (risk_level IN ('high','medium','low','normal')),
    risk_auto_level           TEXT NOT NULL DEFAULT 'normal'
                              CHECK (risk_auto_level IN ('high','medium','low','normal')),
    risk_reasons              TEXT,
    risk_manual_override      TEXT
                              CHECK (risk_manual_override IS NULL OR
                                     risk_manual_override IN ('high','medium','low','normal')),
    risk_manual_note          TEXT,
    risk_evaluated_at         TEXT,
    created_at                TEXT NOT NULL DEFAULT (datetime('now','localtime')),
    updated_at                TEXT NOT NULL DEFAULT (datetime('now','localtime')),
    FOREIGN KEY (project_id) REFERENCES projects(id) ON DELETE SET NULL
);

CREATE TABLE IF NOT EXISTS documents (
    id             INTEGER PRIMARY KEY AUTOINCREMENT,
    doc_type       TEXT NOT NULL
                   CHECK (doc_type IN ('annual_decision','fund_decision','independence_statement')),
    doc_no         TEXT NOT NULL UNIQUE,
    title          TEXT NOT NULL,
    doc_year       INTEGER,
    doc_date       TEXT NOT NULL,
    fund_direction TEXT CHECK (fund_direction IS NULL OR fund_direction IN ('in','out')),
    fund_nature    TEXT,
    settle_date    TEXT,
    extra_text     TEXT,
    selected_items TEXT,
    content_html   TEXT NOT NULL,
    file_path      TEXT NOT NULL,
    created_at     TEXT NOT NULL DEFAULT (datetime('now','localtime'))
);

CREATE TABLE IF NOT EXISTS vouchers (
    id                 INTEGER PRIMARY KEY AUTOINCREMENT,
    name               TEXT NOT NULL,
    voucher_type       TEXT NOT NULL
                       CHECK (voucher_type IN ('bank_receipt','contract','invoice','delivery',
                                               'chat','other')),
    voucher_date       TEXT NOT NULL,
    original_file_name TEXT NOT NULL,
    stored_path        TEXT NOT NULL,
    file_ext           TEXT NOT NULL,
    file_size          INTEGER NOT NULL CHECK (file_size >= 0),
    sha256             TEXT NOT NULL,
    note               TEXT,
    created_at         TEXT NOT NULL DEFAULT (datetime('now','localtime'))
);

CREATE TABLE IF NOT EXISTS entity_links (
    id          INTEGER PRIMARY KEY AUTOINCREMENT,
    source_type TEXT NOT NULL CHECK (source_type IN ('voucher','document')),
    source_id   INTEGER NOT NULL CHECK (source_id > 0),
    target_type TEXT NOT NULL CHECK (target_type IN ('project','contract','transaction')),
    target_id   INTEGER NOT NULL CHECK (target_id > 0),
    created_at  TEXT NOT NULL DEFAULT (datetime('now','localtime')),
    UNIQUE (source_type, source_id, target_type, target_id)
);

CREATE INDEX IF NOT EXISTS idx_contracts_project ON contracts(project_id);

CREATE INDEX IF NOT EXISTS idx_tx_date ON transactions(trans_date);
CREATE INDEX IF NOT EXISTS idx_tx_category ON transactions(category);
CREATE INDEX IF NOT EXISTS idx_tx_risk ON transactions(risk_level);
CREATE INDEX IF NOT EXISTS idx_tx_project ON transactions(project_id);
CREATE INDEX IF NOT EXISTS idx_tx_owner ON transactions(owner_account_type);
CREATE INDEX IF NOT EXISTS idx_tx_query
    ON transactions(trans_date, category, risk_level, owner_account_type);

CREATE INDEX IF NOT EXISTS idx_doc_type ON documents(doc_type);
CREATE INDEX IF NOT EXISTS idx_doc_year ON documents(doc_year);

CREATE INDEX IF NOT EXISTS idx_voucher_type ON vouchers(voucher_type);
CREATE INDEX IF NOT EXISTS idx_voucher_date ON vouchers(voucher_date);
CREATE INDEX IF NOT EXISTS idx_voucher_sha ON vouchers(sha256);

CREATE INDEX IF NOT EXISTS idx_link_source ON entity_links(source_type, source_id);
CREATE INDEX IF NOT EXISTS idx_link_target ON entity_links(target_type, target_id);

-- Recursive triggers are off, so an update trigger does not fire on its own UPDATE.
CREATE TRIGGER IF NOT EXISTS trg_company_profile_updated AFTER UPDATE ON company_profile
BEGIN
    UPDATE company_profile SET updated_at = datetime('now','localtime') WHERE id = NEW.id;
END;

CREATE TRIGGER IF NOT EXISTS trg_projects_updated AFTER UPDATE ON projects
BEGIN
    UPDATE projects SET updated_at = datetime('now','localtime') WHERE id = NEW.id;
END;

CREATE TRIGGER IF NOT EXISTS trg_contracts_updated AFTER UPDATE ON contracts
BEGIN
    UPDATE contracts SET updated_at = datetime('now','localtime') WHERE id = NEW.id;
END;

CREATE TRIGGER IF NOT EXISTS trg_transactions_updated AFTER UPDATE ON transactions
BEGIN
    UPDATE transactions SET updated_at = datetime('now','localtime') WHERE id = NEW.id;
END;

-- No link may outlive either of its ends, whichever way the row goes.
CREATE TRIGGER IF NOT EXISTS trg_transactions_delete_links AFTER DELETE ON transactions
BEGIN
    DELETE FROM entity_links WHERE target_type = 'transaction' AND target_id = OLD.id;
END;

CREATE TRIGGER IF NOT EXISTS trg_contracts_delete_links AFTER DELETE ON contracts
BEGIN
    DELETE FROM entity_links WHERE target_type = 'contract' AND target_id = OLD.id;
END;

CREATE TRIGGER IF NOT EXISTS trg_projects_delete_links AFTER DELETE ON projects
BEGIN
    DELETE FROM entity_links WHERE target_type = 'project' AND target_id = OLD.id;
END;

CREATE TRIGGER IF NOT EXISTS trg_vouchers_delete_links AFTER DELETE ON vouchers
BEGIN
    DELETE FROM entity_links WHERE source_type = 'voucher' AND source_id = OLD.id;
END;

CREATE TRIGGER IF NOT EXISTS trg_documents_delete_links AFTER DELETE ON documents
BEGIN
    DELETE FROM entity_links WHERE source_type = 'document' AND source_id = OLD.id;
END;

-- The single profile row always exists.
INSERT OR IGNORE INTO company_profile (id) VALUES (1);

PRAGMA user_version = 3;
