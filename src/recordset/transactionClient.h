#pragma once

/// Holds something in memory that goes with what is in the file, and is told how a transaction ends.
class TransactionClient {
public:
    virtual ~TransactionClient() = default;
    /// A batch begins: what there is now may have to come back.
    virtual void transactionBegun() = 0;
    /// It was committed.
    virtual void transactionKept() = 0;
    /// It was taken back; all images are again as they were. Tells nobody yet, and does not throw.
    virtual void transactionTakenBack() noexcept = 0;
    /// Lets who shows it follow what was taken back.
    virtual void tellTakenBack() = 0;
};
