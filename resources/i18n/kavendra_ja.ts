<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>kavendra</name>
    <message>
        <source>Search Title, Command, Params, Keywords</source>
        <translation>Title、Command、Params、Keywords を検索</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Search icon</source>
        <translation>検索のアイコン</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>Launch items</source>
        <translation>起動項目</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状況</translation>
    </message>
    <message>
        <source>%1 items</source>
        <translation>%1 項目</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>メッセージ</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>はい</translation>
    </message>
    <message>
        <source>No</source>
        <translation>いいえ</translation>
    </message>
    <message>
        <source>Register kavendra to startup?</source>
        <translation>kavendra をログイン時に起動するよう登録しますか？</translation>
    </message>
    <message>
        <source>Remove kavendra from startup?</source>
        <translation>kavendra をログイン時の起動から外しますか？</translation>
    </message>
    <message>
        <source>Choose Data Directory</source>
        <translation>データディレクトリを選択</translation>
    </message>
    <message>
        <source>Select the folder that contains launch data files.</source>
        <translation>起動データファイルのあるフォルダを選択してください。</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Search path</source>
        <translation>検索欄のパス</translation>
    </message>
    <message>
        <source>Open or copy this path</source>
        <translation>このパスを開く・コピーする</translation>
    </message>
    <message>
        <source>Select All Text on Focus</source>
        <translation>フォーカス時にテキストをすべて選択</translation>
    </message>
    <message>
        <source>Show Status Message</source>
        <translation>状況メッセージを表示</translation>
    </message>
    <message>
        <source>Show Debug Summary</source>
        <translation>デバッグ情報を表示</translation>
    </message>
    <message>
        <source>Show Built-in Items</source>
        <translation>組み込み項目を表示</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外観</translation>
    </message>
    <message>
        <source>Open Config/Log Directory</source>
        <translation>設定・ログディレクトリを開く</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>ログイン時に起動</translation>
    </message>
    <message>
        <source>Open Data Directory</source>
        <translation>データディレクトリを開く</translation>
    </message>
    <message>
        <source>Change Data Directory...</source>
        <translation>データディレクトリを変更...</translation>
    </message>
    <message>
        <source>Reload Data Files</source>
        <translation>データファイルを再読み込み</translation>
    </message>
    <message>
        <source>Open Parent Directory</source>
        <translation>親ディレクトリを開く</translation>
    </message>
    <message>
        <source>Copy to Clipboard</source>
        <translation>クリップボードにコピー</translation>
    </message>
    <message>
        <source>Copy Command to Execute</source>
        <translation>実行するコマンドをコピー</translation>
    </message>
    <message>
        <source>Copy Cell Value</source>
        <translation>セルの値をコピー</translation>
    </message>
    <message>
        <source>Copy Row</source>
        <translation>行をコピー</translation>
    </message>
    <message>
        <source>Open in Excel</source>
        <translation>Excel で開く</translation>
    </message>
    <message>
        <source>Read-Only</source>
        <translation>読み取り専用</translation>
    </message>
    <message>
        <source>New Session</source>
        <translation>新しいセッション</translation>
    </message>
    <message>
        <source>New Session + Read-Only</source>
        <translation>新しいセッション + 読み取り専用</translation>
    </message>
    <message>
        <source>Open Data File (%1)</source>
        <translation>データファイルを開く (%1)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>開く</translation>
    </message>
    <message>
        <source>Open Excel</source>
        <translation>Excel で開く</translation>
    </message>
    <message>
        <source>Open File with Associated App</source>
        <translation>関連付けられたアプリでファイルを開く</translation>
    </message>
    <message>
        <source>Open File with %1</source>
        <translation>%1 でファイルを開く</translation>
    </message>
    <message>
        <source>Open Directory with Finder</source>
        <translation>Finder でディレクトリを開く</translation>
    </message>
    <message>
        <source>Open Directory with Terminal</source>
        <translation>ターミナルでディレクトリを開く</translation>
    </message>
    <message>
        <source>Open Directory with %1</source>
        <translation>%1 でディレクトリを開く</translation>
    </message>
    <message>
        <source>Copy Directory</source>
        <translation>ディレクトリをコピー</translation>
    </message>
    <message>
        <source>Copy Filename</source>
        <translation>ファイル名をコピー</translation>
    </message>
</context>
</TS>
