<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name></name>
    <message id="Search Title, Command, Params, Keywords">
        <source></source>
        <translation>Title、Command、Params、Keywords を検索</translation>
    </message>
    <message id="Search">
        <source></source>
        <translation>検索</translation>
    </message>
    <message id="Search icon">
        <source></source>
        <translation>検索のアイコン</translation>
    </message>
    <message id="Clear">
        <source></source>
        <translation>消去</translation>
    </message>
    <message id="Launch items">
        <source></source>
        <translation>起動項目</translation>
    </message>
    <message id="Status">
        <source></source>
        <translation>状況</translation>
    </message>
    <message id="%1 items">
        <source></source>
        <translation>%1 項目</translation>
    </message>
    <message id="Message">
        <source></source>
        <translation>メッセージ</translation>
    </message>
    <message id="OK">
        <source></source>
        <translation>OK</translation>
    </message>
    <message id="Yes">
        <source></source>
        <translation>はい</translation>
    </message>
    <message id="No">
        <source></source>
        <translation>いいえ</translation>
    </message>
    <message id="Register kavendra to startup?">
        <source></source>
        <translation>kavendra をログイン時に起動するよう登録しますか？</translation>
    </message>
    <message id="Remove kavendra from startup?">
        <source></source>
        <translation>kavendra をログイン時の起動から外しますか？</translation>
    </message>
    <message id="Choose Data Directory">
        <source></source>
        <translation>データディレクトリを選択</translation>
    </message>
    <message id="Select the folder that contains launch data files.">
        <source></source>
        <translation>起動データファイルのあるフォルダを選択してください。</translation>
    </message>
    <message id="Choose">
        <source></source>
        <translation>選択</translation>
    </message>
    <message id="Settings">
        <source></source>
        <translation>設定</translation>
    </message>
    <message id="Search path">
        <source></source>
        <translation>検索欄のパス</translation>
    </message>
    <message id="Open or copy this path">
        <source></source>
        <translation>このパスを開く・コピーする</translation>
    </message>
    <message id="Select All Text on Focus">
        <source></source>
        <translation>フォーカス時にテキストをすべて選択</translation>
    </message>
    <message id="Show Status Message">
        <source></source>
        <translation>状況メッセージを表示</translation>
    </message>
    <message id="Show Debug Summary">
        <source></source>
        <translation>デバッグ情報を表示</translation>
    </message>
    <message id="Show Built-in Items">
        <source></source>
        <translation>組み込み項目を表示</translation>
    </message>
    <message id="Appearance">
        <source></source>
        <translation>外観</translation>
    </message>
    <message id="Open Config/Log Directory">
        <source></source>
        <translation>設定・ログディレクトリを開く</translation>
    </message>
    <message id="Launch at Login">
        <source></source>
        <translation>ログイン時に起動</translation>
    </message>
    <message id="Open Data Directory">
        <source></source>
        <translation>データディレクトリを開く</translation>
    </message>
    <message id="Change Data Directory...">
        <source></source>
        <translation>データディレクトリを変更...</translation>
    </message>
    <message id="Reload Data Files">
        <source></source>
        <translation>データファイルを再読み込み</translation>
    </message>
    <message id="Open Parent Directory">
        <source></source>
        <translation>親ディレクトリを開く</translation>
    </message>
    <message id="Copy to Clipboard">
        <source></source>
        <translation>クリップボードにコピー</translation>
    </message>
    <message id="Copy Command to Execute">
        <source></source>
        <translation>実行するコマンドをコピー</translation>
    </message>
    <message id="Copy Cell Value">
        <source></source>
        <translation>セルの値をコピー</translation>
    </message>
    <message id="Copy Row">
        <source></source>
        <translation>行をコピー</translation>
    </message>
    <message id="Open in Excel">
        <source></source>
        <translation>Excel で開く</translation>
    </message>
    <message id="Read-Only">
        <source></source>
        <translation>読み取り専用</translation>
    </message>
    <message id="New Session">
        <source></source>
        <translation>新しいセッション</translation>
    </message>
    <message id="New Session + Read-Only">
        <source></source>
        <translation>新しいセッション + 読み取り専用</translation>
    </message>
    <message id="Open Data File (%1)">
        <source></source>
        <translation>データファイルを開く (%1)</translation>
    </message>
    <message id="Open">
        <source></source>
        <translation>開く</translation>
    </message>
    <message id="Open Excel">
        <source></source>
        <translation>Excel で開く</translation>
    </message>
    <message id="Open File with Associated App">
        <source></source>
        <translation>関連付けられたアプリでファイルを開く</translation>
    </message>
    <message id="Open File with %1">
        <source></source>
        <translation>%1 でファイルを開く</translation>
    </message>
    <message id="Open Directory with Finder">
        <source></source>
        <translation>Finder でディレクトリを開く</translation>
    </message>
    <message id="Open Directory with Terminal">
        <source></source>
        <translation>ターミナルでディレクトリを開く</translation>
    </message>
    <message id="Open Directory with %1">
        <source></source>
        <translation>%1 でディレクトリを開く</translation>
    </message>
    <message id="Copy Directory">
        <source></source>
        <translation>ディレクトリをコピー</translation>
    </message>
    <message id="Copy Filename">
        <source></source>
        <translation>ファイル名をコピー</translation>
    </message>
    <message id="Loading launch items">
        <source></source>
        <translation>起動項目を読み込み中</translation>
    </message>
    <message id="Opening">
        <source></source>
        <translation>開いています</translation>
    </message>
    <message id="No items match">
        <source></source>
        <translation>一致する項目がありません</translation>
    </message>
</context>
</TS>
