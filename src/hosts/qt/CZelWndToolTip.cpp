#include <Zel260/hosts/qt/CZelWndToolTip.h>

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

CZelWndToolTip::CZelWndToolTip(QWidget* owner)
    : QWidget(owner, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    m_label = new QLabel(this);
    m_label->setForegroundRole(QPalette::ToolTipText);
    layout->addWidget(m_label);
    setStyleSheet("CZelWndToolTip { border: 1px solid palette(shadow); }");
    m_timer = new QTimer(this);
    m_timer->setSingleShot(true);
    QObject::connect(m_timer, &QTimer::timeout, this, [this] { Hide(); });
}

CZelWndToolTip::~CZelWndToolTip() = default;

void CZelWndToolTip::Show(const char* text, int x, int y, eAnchor anchor, UINT timeMs)
{
    if (!text || !*text) {
        Hide();
        return;
    }
    m_label->setText(QString::fromUtf8(text));
    adjustSize();
    const int w = width();
    const int h = height();
    const int col = static_cast<int>(anchor) % 3;
    const int row = static_cast<int>(anchor) / 3;
    const int left = x - (col == 0 ? 0 : col == 1 ? w / 2 : w);
    const int top = y - (row == 0 ? 0 : row == 1 ? h / 2 : h);
    m_anchorPoint = POINT{x, y};
    m_timeMs = timeMs;
    move(left, top);
    show();
    raise();
    m_timer->stop();
    if (timeMs)
        m_timer->start(static_cast<int>(timeMs));
}

void CZelWndToolTip::Hide()
{
    m_timer->stop();
    hide();
}

CString CZelWndToolTip::GetText() const
{
    const QByteArray b = m_label->text().toUtf8();
    return CString(b.constData(), static_cast<int>(b.size()));
}
